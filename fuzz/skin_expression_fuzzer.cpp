// Evaluates any bytes as CONSTANTS text and as one statement.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "editor/skin_expression.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    editor::SkinConstantTable table;
    editor::evaluateConstants(table, text,
                              [](const std::string&, const std::string&, platform::MessageIcon) {});
    for (const auto& [name, value] : table.entries()) {
        if (name.empty() || name.size() > editor::kMaxSkinNameLength) std::abort();
        editor::truncateToInt32(value);
    }

    std::size_t position = 0;
    editor::evaluateStatement(table, text, position);
    if (position > size) std::abort();
    return 0;
}
