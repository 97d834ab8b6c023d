#pragma once
// The body of an HTML form sent as application/x-www-form-urlencoded, read strictly:
// a '%' must be followed by two hex digits, and a field may come only once, so that a
// damaged or doctored body is refused instead of being guessed at. The values are the
// bytes the browser encoded; nothing is re-encoded here.
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tolva::hiscored {

class FormFields {
public:
    // The fields of `body`, or none with `error` saying in a few words what is wrong.
    static std::optional<FormFields> Decode(std::string_view body, std::string& error);

    // The value of `name`, or none if the form has no such field.
    const std::string* Find(std::string_view name) const;

private:
    std::vector<std::pair<std::string, std::string>> fields_;
};

// `bytes` as a name or value of a form body, as a browser encodes it: letters, digits
// and "-_.*" as they are, a blank as '+', every other byte as %XX. For clients: the
// tests and the load driver post with it.
std::string EncodeFormValue(std::string_view bytes);

// True if the request's Content-Type names the form encoding (or is missing, as with
// some old clients); parameters such as "; charset=..." are allowed.
bool IsFormEncoded(std::string_view contentType);

} // namespace tolva::hiscored
