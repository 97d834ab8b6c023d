#include "ClientAddress.h"

#include <arpa/inet.h>

namespace tolva::hiscored {

std::optional<std::string> NormalAddress(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos) return std::nullopt;
    text = text.substr(first, text.find_last_not_of(" \t") - first + 1);
    if (text.size() > INET6_ADDRSTRLEN) return std::nullopt;
    const std::string address(text);
    unsigned char bytes[sizeof(in6_addr)];
    char written[INET6_ADDRSTRLEN];
    for (const int family : {AF_INET, AF_INET6}) {
        if (inet_pton(family, address.c_str(), bytes) == 1 && inet_ntop(family, bytes, written, sizeof written))
            return std::string(written);
    }
    return std::nullopt;
}

std::string SenderAddress(const std::string& peer, const char* forwardedFor, const std::string& trustedProxy) {
    if (trustedProxy.empty() || !forwardedFor || peer != trustedProxy) return peer;
    const std::string_view header(forwardedFor);
    const std::size_t comma = header.rfind(',');
    const std::string_view last = comma == std::string_view::npos ? header : header.substr(comma + 1);
    // A proxy that wrote no usable address leaves the request as the proxy's own.
    return NormalAddress(last).value_or(peer);
}

} // namespace tolva::hiscored
