// Skin expressions: any bytes as the text of CONSTANTS and as a statement.
#include "editor/skin/skin_expression.h"
#include "fuzz/support/target.h"

namespace {

void run(std::string_view bytes) {
    editor::SkinConstantTable table;
    editor::evaluateConstants(table, bytes,
                              [](const std::string&, const std::string&, platform::MessageIcon) {});
    for (const auto& [name, value] : table.entries()) {
        fuzz::require(!name.empty() && name.size() <= editor::kMaxSkinNameLength, "names fit");
        editor::truncateToInt32(value);
    }
    std::size_t position = 0;
    editor::evaluateStatement(table, bytes, position);
    fuzz::require(position <= bytes.size(), "evaluation ends within the text");
}

const fuzz::Registered registered("skin_expression", run);

}  // namespace
