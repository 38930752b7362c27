// Units, rounding and tolerant reading.
#include "state/parameter_text.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <limits>

#include "platform/number_text.h"

namespace state {

namespace {

// A way to write quantities of one unit. The first of a unit whose limit is not reached is used.
struct Scale {
    Unit unit;
    int decimals;
    const char* name;  // behind the number
    double size;       // in the law's unit
    double below;      // rounded magnitudes, in the law's unit
};

constexpr double kAny = std::numeric_limits<double>::infinity();
constexpr Scale kScales[] = {
    {Unit::kPercent, 1, "%", 1.0, kAny},    {Unit::kSeconds, 1, "ms", 0.001, 0.1},
    {Unit::kSeconds, 2, "s", 1.0, kAny},    {Unit::kHertz, 0, "Hz", 1.0, 1000.0},
    {Unit::kHertz, 2, "kHz", 1000.0, kAny}, {Unit::kSlowHertz, 2, "Hz", 1.0, kAny},
    {Unit::kDecibels, 1, "dB", 1.0, kAny},  {Unit::kCents, 1, "ct", 1.0, kAny},
    {Unit::kDegrees, 1, "°", 1.0, kAny},
};

constexpr double kSilentDecibels = -119.95;  // rounded, what lies below shows as none at all

double rounded(double number, int decimals) {
    const double steps = std::pow(10.0, decimals);
    return std::round(number * steps) / steps + 0.0;  // no "-0.0"
}

std::string quantityText(Unit unit, double plain) {
    if (unit == Unit::kDecibels && plain < kSilentDecibels) return "-inf dB";
    for (const Scale& scale : kScales) {
        if (scale.unit != unit) continue;
        const double number = rounded(plain / scale.size, scale.decimals);
        if (std::abs(number * scale.size) >= scale.below) continue;
        return platform::fixedText(number, scale.decimals) + ' ' + scale.name;
    }
    return platform::fixedText(plain, 3);
}

std::string positionText(const Law& law, int position) {
    return law.kind == Law::kSplitKey ? keyText(splitKeyAt(position)) : law.names[position];
}

std::string lowerCase(std::string text) {
    for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return text;
}

std::string trimmed(const std::string& text) {
    const auto first = text.find_first_not_of(" \t");
    if (first == std::string::npos) return "";
    return text.substr(first, text.find_last_not_of(" \t") + 1 - first);
}

// The law's quantity in a text like "620 ms", not a number when there is none.
double quantityIn(std::string text, Unit unit) {
    constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
    std::replace(text.begin(), text.end(), ',', '.');
    const char* const begin = text.c_str() + (text[0] == '+');
    double number = 0.0;
    const char* const end = platform::readNumber(begin, text.c_str() + text.size(), number);
    if (!end) return kNone;
    const std::string name = trimmed(end);
    for (const Scale& scale : kScales) {
        if (scale.unit == unit && lowerCase(scale.name) == name) return number * scale.size;
    }
    return name.empty() ? number : kNone;
}

// The highest value whose quantity is not above `plain`.
float highestUpTo(const Law& law, double plain) {
    float low = 0.0f;
    float high = 1.0f;
    if (law.plain(low) >= plain) return low;
    if (law.plain(high) <= plain) return high;
    for (float middle = 0.5f; middle > low && middle < high; middle = 0.5f * (low + high)) {
        (law.plain(middle) <= plain ? low : high) = middle;
    }
    return low;
}

float positionValue(const Law& law, int position) {
    float value = static_cast<float>(position) / static_cast<float>(law.positions - 1);
    while (law.plain(value) < position) value = std::nextafter(value, 1.0f);
    return value;
}

}  // namespace

std::string keyText(int key) {
    constexpr const char* kNames[] = {"C",  "C#", "D",  "D#", "E",  "F",
                                      "F#", "G",  "G#", "A",  "A#", "B"};
    return kNames[key % 12] + std::to_string(key / 12 - 2);
}

double plainValue(int index, float value) {
    return parameter(index).law.plain(engineValue(value));
}

float valueFromPlain(int index, double plain) {
    const Law& law = parameter(index).law;
    if (std::isnan(plain)) return 0.0f;
    if (law.positions > 0) {
        const double last = law.positions - 1;
        return positionValue(law, static_cast<int>(std::clamp(plain, 0.0, last) + 0.5));
    }
    const float low = highestUpTo(law, plain);
    const float high = std::nextafter(low, 1.0f);
    return std::abs(law.plain(high) - plain) < std::abs(law.plain(low) - plain) ? high : low;
}

float valueFromNormalized(int index, double normalized) {
    const Law& law = parameter(index).law;
    const float value = engineValue(static_cast<float>(normalized));
    if (law.positions == 0) return value;
    const double position = static_cast<double>(value) * (law.positions - 1);
    const double nearest = std::round(position);
    // Only what rounding has pushed below its step.
    const bool isStep = std::abs(position - nearest) < 1e-5 && law.kind != Law::kSwitch;
    return isStep && law.plain(value) < nearest ? positionValue(law, static_cast<int>(nearest))
                                                : value;
}

std::string plainText(int index, float value) {
    const Law& law = parameter(index).law;
    const double plain = plainValue(index, value);
    return law.positions > 0 ? positionText(law, static_cast<int>(plain))
                             : quantityText(law.unit, plain);
}

std::optional<float> valueFromText(int index, const std::string& text) {
    const Law& law = parameter(index).law;
    const std::string wanted = lowerCase(trimmed(text));
    for (int position = 0; position < law.positions; ++position) {
        if (lowerCase(positionText(law, position)) == wanted) return positionValue(law, position);
    }
    if (law.positions > 0) return std::nullopt;
    const double plain = quantityIn(wanted, law.unit);
    if (std::isnan(plain)) return std::nullopt;
    for (const float end : {0.0f, 1.0f}) {  // whose text may be rounded inwards
        if (quantityText(law.unit, plain) == plainText(index, end)) return end;
    }
    return valueFromPlain(index, plain);
}

}  // namespace state
