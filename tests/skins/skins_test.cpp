// The delivered skins have no faults, and every parameter can be reached.
#include <cstdint>
#include <filesystem>
#include <set>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "editor/skin/skin_report.h"
#include "gui/graphics/picture_reader.h"
#include "platform/file.h"

namespace {

constexpr int kNumParams = 42;
constexpr const char* kSkins[] = {"skin", "Night"};

struct SkinSummary {
    std::string report;
    int complaints = 0;
    std::set<std::string> elements;
    std::set<int> reachable;  // parameters with a control that changes them
    std::set<int> shown;      // parameters with a display of their own
};

SkinSummary summaryOf(const std::string& skin) {
    const std::set<std::string> changing = {"slider",  "knob",    "onoff",
                                            "vswitch", "hswitch", "optionmenu"};
    SkinSummary summary;
    std::ostringstream out;
    summary.complaints = editor::reportSkin(QUARZEL_SKINS + skin + platform::kSeparator, out);
    summary.report = out.str();
    std::istringstream lines(summary.report);
    for (std::string line; std::getline(lines, line);) {
        std::istringstream words(line);
        std::string element;
        words >> element;
        summary.elements.insert(element);
        for (std::string word; words >> word;) {
            if (word.rfind("id=", 0) != 0) continue;
            const int id = std::stoi(word.substr(3));
            if (changing.count(element) > 0) summary.reachable.insert(id);
            if (element == "display" || element == "autodisp") summary.shown.insert(id);
        }
    }
    return summary;
}

TEST(Skins, BuildWithoutAMessage) {
    for (const std::string skin : kSkins) {
        SCOPED_TRACE(skin);
        const SkinSummary summary = summaryOf(skin);
        EXPECT_EQ(summary.complaints, 0) << summary.report;
        EXPECT_EQ(summary.report.find("ignored"), std::string::npos) << summary.report;
        EXPECT_EQ(summary.report.find("abandoned"), std::string::npos) << summary.report;
    }
}

TEST(Skins, ReachEveryParameterShowWhatSlidesOrTurnsAndUseEveryElement) {
    const std::set<int> switched = {6, 17, 18, 19, 20, 21, 22, 23, 25, 26, 32, 37};
    std::set<std::string> used;
    for (const std::string skin : kSkins) {
        SCOPED_TRACE(skin);
        SkinSummary summary = summaryOf(skin);
        for (int parameter = 0; parameter < kNumParams; ++parameter) {
            SCOPED_TRACE(parameter);
            EXPECT_EQ(summary.reachable.count(parameter), 1u);
            EXPECT_EQ(summary.shown.count(parameter) + switched.count(parameter), 1u);
        }
        for (const char* const element :
             {"vumeter", "cliplamp", "NoteDisplay", "PresetsDisplay", "ViewTaps", "ViewEnvelope",
              "ViewTone", "ViewKeyboard", "sizegrip", "anydisp", "skinselector", "about"}) {
            EXPECT_EQ(summary.elements.count(element), 1u) << element;
        }
        used.merge(summary.elements);
    }
    for (const char* const element :
         {"CONSTANTS", "background", "update", "slider", "knob", "onoff", "kick", "vswitch",
          "hswitch", "display", "autodisp", "optionmenu"}) {
        EXPECT_EQ(used.count(element), 1u) << element;
    }
}

TEST(Skins, HaveEveryPictureInDoubleSizeTooAndStaySmall) {
    constexpr std::uintmax_t kMostBytes = 1500000;
    const std::string doubled = "#2.0x";
    for (const std::string skin : kSkins) {
        std::uintmax_t bytes = 0;
        for (const auto& file : std::filesystem::directory_iterator(QUARZEL_SKINS + skin)) {
            SCOPED_TRACE(file.path());
            bytes += file.file_size();
            const std::string stem = file.path().stem().string();
            if (file.path().extension() != ".png" || stem.find(doubled) != std::string::npos)
                continue;
            const auto picture = VSTGUI::readPictureFile(file.path().string());
            const auto twice = VSTGUI::readPictureFile(
                (file.path().parent_path() / (stem + doubled + ".png")).string());
            ASSERT_TRUE(picture && twice);
            EXPECT_EQ(twice->width(), 2 * picture->width());
            EXPECT_EQ(twice->height(), 2 * picture->height());
        }
        EXPECT_LT(bytes, kMostBytes) << skin;
    }
}

}  // namespace
