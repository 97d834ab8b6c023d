// Who sent a request, with and without a trusted reverse proxy.
#include "ClientAddress.h"

#include <gtest/gtest.h>

using namespace tolva::hiscored;

TEST(ClientAddress, BelievesForwardedForOnlyFromTheTrustedProxy) {
    // No proxy trusted: the header is anybody's to write.
    EXPECT_EQ(SenderAddress("203.0.113.5", "198.51.100.1", ""), "203.0.113.5");
    // From the trusted proxy: the address it added, the last one.
    EXPECT_EQ(SenderAddress("10.0.0.2", "1.1.1.1, 198.51.100.7", "10.0.0.2"), "198.51.100.7");
    EXPECT_EQ(SenderAddress("10.0.0.2", " 2001:DB8:0:0::7 ", "10.0.0.2"), "2001:db8::7");  // in its short form
    // From anyone else, or without a usable header, the connection's own address.
    EXPECT_EQ(SenderAddress("10.0.0.3", "198.51.100.7", "10.0.0.2"), "10.0.0.3");
    EXPECT_EQ(SenderAddress("10.0.0.2", nullptr, "10.0.0.2"), "10.0.0.2");
    EXPECT_EQ(SenderAddress("10.0.0.2", "198.51.100.7, unknown", "10.0.0.2"), "10.0.0.2");
    EXPECT_EQ(SenderAddress("10.0.0.2", "", "10.0.0.2"), "10.0.0.2");
}
