#pragma once
// Who sent a request: the address the connection comes from, or, behind a reverse
// proxy the operator names, the address that proxy put last into X-Forwarded-For.
// Anyone can write that header, so it is believed only from the trusted proxy, and
// only its last address (the one the proxy itself added) is taken.
#include <optional>
#include <string>
#include <string_view>

namespace tolva::hiscored {

// `text` as a numeric IPv4 or IPv6 address in its usual written form, or none.
std::optional<std::string> NormalAddress(std::string_view text);

// The sender of a request that came from `peer` with `forwardedFor` (null if the
// header is missing). `trustedProxy` is a normal address, or empty for none.
std::string SenderAddress(const std::string& peer, const char* forwardedFor, const std::string& trustedProxy);

} // namespace tolva::hiscored
