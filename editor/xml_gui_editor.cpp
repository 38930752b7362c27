// Builds a skin, and opens and closes the editor.
#include "editor/xml_gui_editor.h"

#include <algorithm>

#include "editor/control_factory.h"
#include "editor/editor_zoom.h"
#include "editor/views/path_fill.h"
#include "editor/skin_missing.h"
#include "editor/skin/skin_text.h"
#include "platform/folders.h"
#include "platform/message_box.h"
#include "platform/path_text.h"
#include "state/chunks.h"
#include "state/data_folder.h"
#include "state/parameters.h"

namespace editor {

using namespace VSTGUI;

namespace {

constexpr const char* kMissingBank = "Missing Bank";

// Restores the build pointer however a build ends.
template <class Build>
class CurrentBuild {
  public:
    CurrentBuild(Build*& current, Build& build) : current_(current) { current_ = &build; }
    ~CurrentBuild() { current_ = nullptr; }
    CurrentBuild(const CurrentBuild&) = delete;
    CurrentBuild& operator=(const CurrentBuild&) = delete;

  private:
    Build*& current_;
};

}  // namespace

xmlGuiEditor::~xmlGuiEditor() noexcept {
    xmlGuiEditor::close();
}

EditorRect xmlGuiEditor::getRect() {
    if (isOpen() || build_) return AEffGUIEditor::getRect();
    display_ = platform::mainDisplay();
    const double zoom = measureSkin() ? boundedZoom(wantedZoom(), size_) : 1;
    if (size_ == CPoint()) size_ = CPoint(kDataFolderScreenWidth, kDataFolderScreenHeight);
    setRect(size_.x * zoom, size_.y * zoom);
    return AEffGUIEditor::getRect();
}

// Finds the size of the chosen skin's background. Returns false if there is none.
bool xmlGuiEditor::measureSkin() {
    size_ = CPoint();
    if (isSkinMissing()) return false;
    // Stay silent here: open() reports the faults.
    const platform::ScopedMessageHandler silence(
        [](const std::string&, const std::string&, platform::MessageIcon) {});
    const Toolkit toolkit;
    if (const auto folder = skinChoice().folder()) {
        SkinBuild build(*folder, mostMessages());
        runBuild(build, SkinElements::kBackgroundOnly);
    }
    return size_ != CPoint();
}

// A message box may stay open for minutes. Meanwhile the host may call anything.
bool xmlGuiEditor::open(void* parentWindow) {
    if (!parentWindow || build_) return false;
    close();
    parentWindow_ = parentWindow;
    display_ = platform::mainDisplay();
    host_.takeChangedParameters();  // new controls start with current values
    released_ = 0;
    const Toolkit toolkit;  // pictures are loaded before there is a frame
    if (!openSkin(parentWindow)) return false;
    if (!isOpen() && !openDataFolderScreen(parentWindow)) return false;
    sayMissingBank();
    return isOpen();
}

// Returns false if no window can be opened. A skin without a frame leaves the editor closed.
bool xmlGuiEditor::openSkin(void* parentWindow) {
    if (isSkinMissing()) return true;
    skins_ = skinChoice();
    setScreenReason("");
    const auto folder = skins_.folder();
    if (!folder) {
        setSkinMissing(true);
        return true;
    }
    SkinBuild build(*folder, mostMessages());
    build.parentWindow = parentWindow;
    if (runBuild(build, SkinElements::kAll) != SkinLoad::kBuilt) setSkinMissing(true);
    if (build.abandoned) close();
    if (isOpen()) {
        pictures_ = std::move(build.pictures);
        readDoublePictures();
        addAids();
        showSize();
    } else if (!build.abandoned) {
        giveUpSkin();
    }
    return !build.abandoned;
}

// Goes back to the default skin. The data-folder screen has no skin menu, so the user could never
// leave a chosen skin that cannot be opened.
void xmlGuiEditor::giveUpSkin() {
    if (!skins_.isStored || skins_.name == kDefaultSkin) return;
    std::string reason =
        "The skin \"" + platform::utf8FromPath(skins_.name) + "\" cannot be opened.";
    if (chooseSkin(kDefaultSkin)) reason += " The default skin is next.";
    setScreenReason(reason);
}

bool xmlGuiEditor::openDataFolderScreen(void* parentWindow) {
    close();
    setRect(kDataFolderScreenWidth, kDataFolderScreenHeight);
    if (!openFrame(kDataFolderScreenWidth, kDataFolderScreenHeight, 1, parentWindow)) return false;
    dataFolderScreen_ = true;
    buildDataFolderScreen(*frame, screenReason());
    host_.sizeWindow(kDataFolderScreenWidth, kDataFolderScreenHeight);
    return true;
}

void xmlGuiEditor::sayMissingBank() {
    if (!state::defaultBankMissing() || missingBankShown_) return;
    missingBankShown_ = true;
    const std::string path = platform::resourceFolder().value_or("") + state::kDefaultBankFile;
    platform::showMessage(kMissingBank,
                          std::string(kMissingBank) + '\n' + platform::utf8FromPath(path),
                          platform::MessageIcon::kNone);
}

SkinLoad xmlGuiEditor::runBuild(SkinBuild& build, SkinElements elements) {
    const CurrentBuild<SkinBuild> current(build_, build);
    const SkinLoad result =
        loadSkin(build.skinFolder, elements,
                 [this](const std::string& element, const SkinAttributes& attributes) {
                     if (!build_->abandoned) buildElement(element, attributes);
                 });
    build.messages.showRest();
    return result;
}

void xmlGuiEditor::close() {
    if (build_) {
        build_->abandoned = true;
        return;
    }
    // Clear what refers to views: they go with the frame. Closing ends a text entry, which may
    // still report its change.
    if (frame) {
        frame->unregisterMouseObserver(this);
        host_.learnSlot().disarm();
    }
    learners_.clear();
    gestures_.clear();
    aids_.reset();
    learning_ = state::LearnSlot::kNone;
    learningEnds_ = nullptr;
    pictures_.reset();
    AEffGUIEditor::close();
    parameterLinks_.clear();
    controls_.clear();
    readOuts_.clear();
    readsNothing_ = false;
    currentView_ = nullptr;
    currentTag_ = kNoTag;
    skinChanged_ = false;
    opensChosenSkin_ = false;
    dataFolderScreen_ = false;
}

std::optional<SkinValues> xmlGuiEditor::readValues(const std::string& element,
                                                   const SkinAttributes& attributes) {
    const SkinElementRule* const rule = findSkinElementRule(element);
    if (!rule) return std::nullopt;
    return readSkinElement(
        *rule, attributes, build_->constants,
        [this](const std::string& fileName) { return build_->pictures.find(fileName) != nullptr; },
        build_->report);
}

CBitmap* xmlGuiEditor::pictureOf(const SkinValues& values, std::string_view name) {
    const auto fileName = values.picture(name);
    return fileName ? build_->pictures.find(*fileName) : nullptr;
}

bool xmlGuiEditor::buildElement(const std::string& element, const SkinAttributes& attributes) {
    if (equalIgnoringCase(element, "CONSTANTS")) {
        const std::string* const text = attributes.find("");
        if (text) evaluateConstants(build_->constants, *text, build_->report);
        return true;
    }
    if (!findSkinElementRule(element)) return true;
    const auto values = readValues(element, attributes);
    if (!values) return false;
    if (equalIgnoringCase(element, "background")) return makeBackground(*values);
    if (equalIgnoringCase(element, "sizegrip")) return addSizeGrip(*values);
    if (equalIgnoringCase(element, "update")) {
        parameterLinks_.emplace_back(truncateToInt32(*values->number("src")),
                                     truncateToInt32(*values->number("dst")));
        return true;
    }
    const ControlRule* const rule = findControlRule(element);
    if (!rule) return true;
    CControl* const control = rule->make(
        {*values, attributes, build_->pictures, build_->background, this, host_, build_->report});
    if (!control) return false;
    addControl(control);
    if (rule->hasDefault) {
        const auto given = values->number("default");
        control->setDefaultValue(given ? static_cast<float>(*given) : control->getValue());
    }
    if (auto* const meter = dynamic_cast<CVuMeter*>(control)) {
        meterMade(meter, truncateToInt32(*values->number("id")));
    }
    return true;
}

// Only the first background element counts.
bool xmlGuiEditor::makeBackground(const SkinValues& values) {
    if (build_->background) return true;
    build_->background = build_->pictures.find(*values.picture("filename"));
    size_ = build_->background->getSize();
    if (!build_->parentWindow) return true;

    const double zoom = boundedZoom(wantedZoom(), size_);
    setRect(size_.x * zoom, size_.y * zoom);
    if (!openFrame(truncateToInt32(size_.x), truncateToInt32(size_.y), zoom,
                   build_->parentWindow)) {
        build_->abandoned = true;
        return false;
    }
    frame->setBackground(build_->background);
    frame->registerMouseObserver(this);
    for (const auto& view : build_->waiting) {
        view->remember();
        frame->addView(view);
    }
    build_->waiting.clear();
    return true;
}

void xmlGuiEditor::addView(CView* view) {
    if (frame) {
        frame->addView(view);
    } else {
        build_->waiting.push_back(owned(view));
    }
    if (view->wantsFocus() && !dynamic_cast<CTextEdit*>(view)) gestures_.add(view);
}

void xmlGuiEditor::addControl(CControl* control) {
    addView(control);
    controls_.emplace(control->getTag(), control);
    auto* const menu = dynamic_cast<COptionMenu*>(control);
    if (menu && menu->getNbEntries() == 0) {
        menu->getTag() == kSkinSelectorTag ? fillSkinSelector(*menu)
                                           : fillMenu(*menu, menu->getTag());
    }
    if (menu && (host_.isParameter(menu->getTag()) || menu->getTag() == kSkinSelectorTag)) {
        menu->setStyle(menu->getStyle() | COptionMenu::kCheckStyle);
    }
    if (isSwitch(control->getTag())) showSwitch(*control);
    auto* const display = dynamic_cast<CDisplay*>(control);
    if (display && display->getTag() == kNoTag) readOuts_.push_back(display);
    if (!host_.isParameter(control->getTag())) return;
    showValue(*control);
    if (!menu && dynamic_cast<CParamDisplay*>(control)) {
        control->setDefaultValue(state::parameter(control->getTag()).defaultValue);
    }
    learners_.push_back(std::make_unique<CMidiLearn>(control, host_));
}

void xmlGuiEditor::fillSkinSelector(COptionMenu& menu) {
    for (const Skin& skin : skins_.installed) {
        const std::string title =
            skin.name == kDefaultSkin ? "Default Skin" : platform::utf8FromPath(skin.name);
        menu.addEntry(new CMenuItem(UTF8String(title)));
    }
    menu.setCurrent(skins_.selected());
}

}  // namespace editor
