#include "ModModule.h"

#include <algorithm>
#include <stdexcept>

namespace {

void PutBe16(std::vector<uint8_t>& out, int value)
{
    out.push_back(static_cast<uint8_t>((value >> 8) & 0xFF));
    out.push_back(static_cast<uint8_t>(value & 0xFF));
}

void PutText(std::vector<uint8_t>& out, const std::string& text, size_t width)
{
    for (size_t i = 0; i < width; ++i) {
        out.push_back(i < text.size() ? static_cast<uint8_t>(text[i]) : 0);
    }
}

} // namespace

int ModModule::Period(int index)
{
    static const int periods[36] = {856, 808, 762, 720, 678, 640, 604, 570, 538, 508, 480, 453,
                                    428, 404, 381, 360, 340, 320, 302, 285, 269, 254, 240, 226,
                                    214, 202, 190, 180, 170, 160, 151, 143, 135, 127, 120, 113};
    if (index < 0 || index > 35) {
        throw std::invalid_argument("note outside the three tracker octaves");
    }
    return periods[index];
}

std::vector<uint8_t> ModModule::Encode() const
{
    if (samples.size() > 31 || order.empty() || order.size() > 128 || patterns.empty() || patterns.size() > 64) {
        throw std::invalid_argument("module too large or empty");
    }
    std::vector<uint8_t> out;
    PutText(out, title, 20);
    for (size_t i = 0; i < 31; ++i) {
        const ModSample* s = i < samples.size() ? &samples[i] : nullptr;
        if (s && (s->data.size() % 2 != 0 || s->data.size() > 131070 || s->loopStart % 2 != 0 ||
                  s->loopLength % 2 != 0 || s->loopStart + s->loopLength > static_cast<int>(s->data.size()))) {
            throw std::invalid_argument("sample " + s->name + " has an odd size or a loop outside it");
        }
        PutText(out, s ? s->name : std::string(), 22);
        PutBe16(out, s ? static_cast<int>(s->data.size() / 2) : 0);
        out.push_back(0); // finetune
        out.push_back(static_cast<uint8_t>(s ? std::clamp(s->volume, 0, 64) : 0));
        PutBe16(out, s && s->loopLength > 0 ? s->loopStart / 2 : 0);
        PutBe16(out, s && s->loopLength > 0 ? s->loopLength / 2 : 1);
    }
    out.push_back(static_cast<uint8_t>(order.size()));
    out.push_back(127);
    int highest = 0;
    for (size_t i = 0; i < 128; ++i) {
        const int entry = i < order.size() ? order[i] : 0;
        if (entry < 0 || entry >= static_cast<int>(patterns.size())) {
            throw std::invalid_argument("order names a pattern that doesn't exist");
        }
        highest = std::max(highest, entry);
        out.push_back(static_cast<uint8_t>(entry));
    }
    PutText(out, "M.K.", 4);
    for (int p = 0; p <= highest; ++p) {
        for (const ModCell& c : patterns[static_cast<size_t>(p)]) {
            out.push_back(static_cast<uint8_t>((c.sample & 0xF0) | ((c.period >> 8) & 0x0F)));
            out.push_back(static_cast<uint8_t>(c.period & 0xFF));
            out.push_back(static_cast<uint8_t>(((c.sample & 0x0F) << 4) | (c.effect & 0x0F)));
            out.push_back(static_cast<uint8_t>(c.param & 0xFF));
        }
    }
    for (const ModSample& s : samples) {
        for (int8_t v : s.data) {
            out.push_back(static_cast<uint8_t>(v));
        }
    }
    return out;
}
