// Draws the editor of an instrument that only stores values.
#include "editor/skin_preview.h"

#include <array>
#include <cstdint>
#include <limits>
#include <ostream>
#include <set>
#include <sstream>
#include <vector>

#define STB_IMAGE_WRITE_STATIC
#define STB_IMAGE_WRITE_IMPLEMENTATION
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wunused-function"
#pragma GCC diagnostic ignored "-Wmissing-field-initializers"
#include <stb_image_write.h>
#pragma GCC diagnostic pop

#include "editor/my_editor.h"
#include "editor/skin/skin_report.h"
#include "gui/headless.h"
#include "platform/file.h"
#include "platform/message_box.h"
#include "state/bank.h"
#include "state/parameters.h"

namespace editor {
namespace {

class PreviewHost final : public EditorHost {
  public:
    int parameterCount() const override { return state::kNumParams; }
    float parameter(int index) const override { return state::parameter(index).defaultValue; }
    void setParameter(int, float) override {}
    std::uint64_t takeChangedParameters() override { return 0; }
    void setParameterAutomated(int, float) override {}
    void beginEdit(int) override {}
    void endEdit(int) override {}
    std::string parameterName(int index) const override { return state::parameter(index).name; }
    std::string parameterDisplay(int index) const override {
        return state::valueText(parameter(index));
    }
    std::string parameterLabel(int) const override { return {}; }

    int programCount() const override { return state::kNumPrograms; }
    int program() const override { return 0; }
    void setProgram(int) override {}
    std::string programName(int) const override { return "Init"; }
    void renameProgram(int, const std::string&) override {}
    state::ProgramRecord programRecord(int) const override { return {}; }
    state::ProgramRecord loadedProgram(int) const override { return {}; }
    void putProgram(int, const state::ProgramRecord&) override {}
    void loadProgram(int, const state::ProgramRecord&) override {}
    state::SavedState savedState() override { return {}; }
    void loadSavedState(const state::SavedState&) override {}

    int heldNotes() const override { return 0; }
    int lastKey() const override { return -1; }
    std::bitset<128> heldKeys() const override { return {}; }
    void playKey(int, int) override {}
    const state::ToneCurve& toneCurve() override { return tone_; }
    OutputPeaks takeOutputPeaks() override { return {}; }
    int chorusTapCount() const override { return 3; }
    float chorusTap(int tap) const override { return 0.25f * static_cast<float>(tap + 1); }

    state::LearnSlot& learnSlot() override { return learnSlot_; }
    bool sizeWindow(int, int) override { return false; }

  private:
    static state::ToneCurve toneOfDefaults() {
        const float highPass = state::parameter(state::kHP).defaultValue;
        const float brightness = state::parameter(state::kBrigthness).defaultValue;
        return state::toneCurve({highPass, highPass, brightness, 48000.0});
    }

    state::LearnSlot learnSlot_;
    const state::ToneCurve tone_ = toneOfDefaults();
};

class PreviewEditor final : public myEditor {
  public:
    PreviewEditor(EditorHost& host, std::string folder) : myEditor(host) {
        while (!folder.empty() && folder.back() == platform::kSeparator) folder.pop_back();
        const std::size_t nameStart = folder.rfind(platform::kSeparator) + 1;
        const std::string name = folder.substr(nameStart);
        choice_ = {folder.substr(0, nameStart), name, {{name, folder + platform::kSeparator}}};
    }

  protected:
    SkinChoice skinChoice() const override { return choice_; }
    int mostMessages() const override { return std::numeric_limits<int>::max(); }

  private:
    SkinChoice choice_;
};

// Converts premultiplied BGRA words to the bytes red, green, blue, alpha.
std::vector<std::uint8_t> bytesOf(const VSTGUI::PixelBuffer& picture) {
    std::vector<std::uint8_t> bytes;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const std::uint32_t pixel = picture.at(x, y);
            const std::uint32_t alpha = pixel >> 24;
            for (const int shift : {16, 8, 0}) {
                const std::uint32_t channel = pixel >> shift & 255u;
                bytes.push_back(static_cast<std::uint8_t>(
                    alpha == 0 ? 0 : (channel * 255u + alpha / 2) / alpha));
            }
            bytes.push_back(static_cast<std::uint8_t>(alpha));
        }
    }
    return bytes;
}

}  // namespace

std::optional<VSTGUI::PixelBuffer> drawSkin(const std::string& skinFolder, int zoom) {
    const VSTGUI::headless::Scope scope;
    PreviewHost host;
    PreviewEditor editor(host, skinFolder);
    if (!editor.open(&host) || !editor.showsSkin()) return std::nullopt;
    editor.showAt(zoom / 100.0);  // overrides the zoom in the settings
    editor.idle();
    return VSTGUI::headless::takePicture(*editor.getFrame());
}

bool writePng(const std::string& path, const VSTGUI::PixelBuffer& picture) {
    constexpr int kChannels = 4;
    const auto bytes = bytesOf(picture);
    return stbi_write_png(path.c_str(), picture.width(), picture.height(), kChannels, bytes.data(),
                          picture.width() * kChannels) != 0;
}

int reportAndDrawSkin(const std::string& skinFolder, const std::string& pngPath, std::ostream& out,
                      int zoom) {
    std::stringstream listing;
    int complaints = reportSkin(skinFolder, listing);
    out << listing.str();
    std::set<std::string> said;
    for (std::string line; std::getline(listing, line);) said.insert(line);
    const auto complain = [&](const std::string& title, const std::string& text) {
        const std::string line = "! " + title + ": " + text;
        if (said.count(line) > 0) return;
        out << line << '\n';
        ++complaints;
    };
    const platform::ScopedMessageHandler handler(
        [&complain](const std::string& title, const std::string& text, platform::MessageIcon) {
            complain(title, text);
        });
    const auto picture = drawSkin(skinFolder, zoom);
    if (!picture) {
        complain("No picture", skinFolder);
    } else if (!pngPath.empty() && !writePng(pngPath, *picture)) {
        complain("Cannot write", pngPath);
    }
    return complaints;
}

}  // namespace editor
