#pragma once
// The one error the game's own code raises: a number, the source that raised it and a
// description, as the error reporter shows them.
#include <stdexcept>
#include <string>

namespace tolva {

class GameError : public std::runtime_error {
public:
    GameError(int number, std::string source, std::string description)
        : std::runtime_error(description), Number(number), Source(std::move(source)),
          Description(std::move(description)) {}

    int Number;
    std::string Source;
    std::string Description;
};

} // namespace tolva
