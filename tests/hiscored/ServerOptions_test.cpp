// The server's command line.
#include "ServerOptions.h"

#include <gtest/gtest.h>

using namespace tolva::hiscored;

TEST(ServerOptions, ReadsTheAddressAndTheDatabaseWithDefaults) {
    std::string error;
    const auto defaults = ParseServerOptions({}, error);
    ASSERT_TRUE(defaults);
    EXPECT_EQ(defaults->Host, "127.0.0.1");
    EXPECT_EQ(defaults->Port, 8080);
    EXPECT_EQ(defaults->Database, "hiscores.sqlite");
    EXPECT_FALSE(defaults->Help);

    const auto given = ParseServerOptions({"--db", "club.sqlite", "--listen=0.0.0.0:0"}, error);
    ASSERT_TRUE(given) << error;
    EXPECT_EQ(given->Host, "0.0.0.0");
    EXPECT_EQ(given->Port, 0);
    EXPECT_EQ(given->Database, "club.sqlite");

    const auto v6 = ParseServerOptions({"--listen", "[::1]:65535", "--help"}, error);
    ASSERT_TRUE(v6) << error;
    EXPECT_EQ(v6->Host, "::1");
    EXPECT_EQ(v6->Port, 65535);
    EXPECT_TRUE(v6->Help);

    EXPECT_EQ(defaults->RequestTimeoutSeconds, 5);
    EXPECT_EQ(defaults->MaxSubmissionsPerMinute, 10);
    EXPECT_TRUE(defaults->TrustedProxy.empty());
    const auto hardened = ParseServerOptions({"--db", "postgres://club@db.example/hiscores", "--request-timeout", "2",
                                              "--max-connections=100", "--max-connections-per-ip", "4",
                                              "--max-submissions-per-minute", "0", "--trusted-proxy", "2001:DB8::1"},
                                             error);
    ASSERT_TRUE(hardened) << error;
    EXPECT_EQ(hardened->Database, "postgres://club@db.example/hiscores");
    EXPECT_EQ(hardened->RequestTimeoutSeconds, 2);
    EXPECT_EQ(hardened->MaxConnections, 100);
    EXPECT_EQ(hardened->MaxConnectionsPerAddress, 4);
    EXPECT_EQ(hardened->MaxSubmissionsPerMinute, 0);
    EXPECT_EQ(hardened->TrustedProxy, "2001:db8::1");
}

TEST(ServerOptions, RefusesBadArgumentsWithOneLine) {
    const std::vector<std::vector<std::string>> bad = {
        {"--listen"},          {"--listen", "8080"},     {"--listen", "host:"},  {"--listen", ":80"},
        {"--listen", "h:65536"}, {"--listen", "h:-1"},    {"--listen", "h:80x"},  {"--listen", "::1:80"},
        {"--listen", "[]:80"}, {"--db"},                 {"--db="},              {"--port", "80"},
        {"extra"},             {"--help=yes"},           {"--request-timeout", "0"},
        {"--request-timeout", "2s"}, {"--max-connections", "-1"}, {"--max-connections-per-ip", ""},
        {"--max-submissions-per-minute", "1e3"}, {"--trusted-proxy", "proxy.example"}, {"--trusted-proxy"},
    };
    for (const auto& args : bad) {
        std::string error;
        EXPECT_FALSE(ParseServerOptions(args, error)) << args[0];
        EXPECT_FALSE(error.empty());
        EXPECT_EQ(error.find('\n'), std::string::npos);
    }
    EXPECT_NE(ServerUsage().find("HiscoreUrl"), std::string::npos);
}
