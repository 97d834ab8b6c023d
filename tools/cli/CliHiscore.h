#pragma once
// What `hiscore show` prints for a hiscore file; `session` prints its table the same way.
#include <cstdint>
#include <string>

namespace tolva::cli {

// The ten lines PLACE<TAB>NAME<TAB>LEVEL<TAB>SCORE of the table in `file` read with the
// set key `key`, then "checksum: ok", "checksum: bad" or "checksum: none".
std::string HiscoreShowText(const std::string& file, std::int16_t key);

} // namespace tolva::cli
