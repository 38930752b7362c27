// Builds the editor that a skin describes, and binds its controls to the parameters.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "editor/aeff_gui_editor.h"
#include "editor/browser/browser_view.h"
#include "editor/browser/sound_browser.h"
#include "editor/control_gestures.h"
#include "editor/hover_help.h"
#include "editor/sound_tools.h"
#include "editor/views/midi_learn.h"
#include "editor/picture_cache.h"
#include "editor/skin_choice.h"
#include "editor/skin/skin_loader.h"
#include "editor/skin/skin_messages.h"
#include "editor/skin/skin_values.h"
#include "editor/tags.h"
#include "editor/value_entry.h"
#include "editor/views/key_view.h"
#include "editor/views/outline.h"
#include "editor/views/text_display.h"
#include "platform/display.h"
#include "vstgui/lib/events.h"
#include "vstgui/vstgui.h"

namespace editor {

// One value that a preset switch sends when it reaches a position.
struct SwitchPreset {
    std::int16_t switchNumber;
    std::int16_t position;
    std::int32_t parameter;
    float value;
};

class xmlGuiEditor : public AEffGUIEditor,
                     public VSTGUI::IControlListener,
                     private VSTGUI::IMouseObserver {
  public:
    using AEffGUIEditor::AEffGUIEditor;
    ~xmlGuiEditor() noexcept override;

    EditorRect getRect() override;
    bool open(void* parentWindow) override;
    // True if the editor is open and shows a skin, not the data-folder screen.
    bool showsSkin() const { return isOpen() && !dataFolderScreen_; }
    // Sets the zoom of the open editor, 1..3, limited to what is possible. The settings stay.
    void showAt(double zoom);
    // How much larger the host wants everything; the zoom of the settings comes on top. Takes
    // effect at once, and the host is asked for the size.
    void setContentScale(double scale);
    void close() override;
    bool wantsText() const override;  // for the sound browser, too
    void idle() override;
    // Keep steps that others take at the instrument here, so that they can be undone.
    EditHistory& history() { return tools_.history(); }
    // Handles a wheel turn that the host passes on; up is positive. Returns true if the control
    // under the pointer used it.
    bool onWheel(double notches);
    void beginEdit(std::int32_t tag) override;
    void endEdit(std::int32_t tag) override;
    void valueChanged(VSTGUI::CControl* control) override;
    std::int32_t controlModifierClicked(VSTGUI::CControl* control,
                                        VSTGUI::CButtonState buttons) override;

  protected:
    virtual SkinChoice skinChoice() const { return findSkins(); }
    // Most messages shown per build. Further ones are only counted.
    virtual int mostMessages() const { return SkinMessages::kMostShown; }
    // Builds one element. Returns false, after telling the user, if that fails.
    virtual bool buildElement(const std::string& element, const SkinAttributes& attributes);
    // Adds the items of a menu whose element lists none.
    virtual void fillMenu(VSTGUI::COptionMenu&, int /*tag*/) {}
    virtual void meterMade(VSTGUI::CVuMeter*, int /*number*/) {}
    // The lines of the tool tip of a view. Usually the first is its name.
    virtual std::vector<std::string> describe(VSTGUI::CView& view) const;
    // Called when a control with an unknown tag changes.
    virtual void otherControlChanged(VSTGUI::CControl*) {}

    // Helpers for buildElement. readValues returns nothing if the element cannot be built.
    std::optional<SkinValues> readValues(const std::string& element,
                                         const SkinAttributes& attributes);
    VSTGUI::CBitmap* pictureOf(const SkinValues& values, std::string_view name);
    void addView(VSTGUI::CView* view);  // takes over the caller's reference

    // Opens the sound browser over the editor. Returns false if that is too small for it.
    bool openBrowser();

    std::vector<SwitchPreset> switchPresets_;
    BrowserColors browserColors_;

  private:
    // State of one skin build.
    struct SkinBuild {
        SkinBuild(const std::string& folder, int mostMessages)
            : skinFolder(folder), messages(mostMessages), pictures(folder) {}
        std::string skinFolder;
        SkinMessages messages;
        const platform::MessageHandler report =
            [this](const std::string& title, const std::string& text, platform::MessageIcon icon) {
                messages.show(title, text, icon);
            };
        SkinConstantTable constants;
        PictureCache pictures;
        VSTGUI::CBitmap* background = nullptr;  // set by its element
        void* parentWindow = nullptr;           // null if only the size is wanted
        // True if no window could be opened, or if the host closed the editor during a message.
        bool abandoned = false;
        // Views created before the frame.
        std::vector<VSTGUI::SharedPointer<VSTGUI::CView>> waiting;
    };

    bool openSkin(void* parentWindow);
    void giveUpSkin();
    bool openDataFolderScreen(void* parentWindow);
    SkinLoad runBuild(SkinBuild& build, SkinElements elements);
    bool makeBackground(const SkinValues& values);
    void addControl(VSTGUI::CControl* control);
    void sayMissingBank();
    void fillSkinSelector(VSTGUI::COptionMenu& menu);

    void sendParameter(VSTGUI::CControl& control);
    void sendSwitch(int number, float value);
    void selectSkin(int index);
    void redrawLinked(int source);
    void followChanges();
    void followParameter(int index);
    void showValue(VSTGUI::CControl& control);
    void writeReadOut();
    void showSkinNotice();
    bool measureSkin();
    void openChosenSkin();

    void onMouseEntered(VSTGUI::CView* view, VSTGUI::CFrame* in) override;
    void onMouseExited(VSTGUI::CView* view, VSTGUI::CFrame* in) override;
    void onMouseEvent(VSTGUI::MouseEvent& event, VSTGUI::CFrame* in) override;
    void openMenu(const VSTGUI::CPoint& where);
    // xml_gui_editor_size.cpp; steps are percentages
    std::vector<int> zoomSteps() const;
    int zoomStep() const;
    double largestZoom() const;
    double wantedZoom() const;
    void zoomTo(int percent);
    void followZoom();
    std::vector<std::string> sizeLines(int& current) const;
    void showSize();
    bool addSizeGrip(const SkinValues& values);
    void dragTo(const VSTGUI::CPoint& corner);
    void addAids();
    void useKey(VSTGUI::KeyboardEvent& event);
    void moveFocus(bool back);
    void followLearning();
    void followSwitches();
    void showSwitch(VSTGUI::CControl& control);
    bool isSwitchAt(int number, int position) const;
    void showCompare();
    void run(int command, const VSTGUI::CPoint& where);
    void openVaryMenu(const VSTGUI::CPoint& where);
    void openControllerMenu(const VSTGUI::CPoint& where);
    void openSizeMenu(const VSTGUI::CPoint& where);
    void readDoublePictures();

    SkinChoice skins_;
    SkinBuild* build_ = nullptr;            // set while a skin is being built
    std::optional<PictureCache> pictures_;  // set once the open skin has been built
    std::optional<double> hostScale_;
    std::optional<platform::Display> display_;
    VSTGUI::CPoint size_;  // of the background, at 100 percent

    std::vector<std::pair<int, int>> parameterLinks_;  // source and destination tags
    std::multimap<int, VSTGUI::CControl*> controls_;   // by tag
    std::vector<std::unique_ptr<CMidiLearn>> learners_;
    ControlGestures gestures_{host_,
                              [this](VSTGUI::CControl& control) { aids_->entry.open(control); },
                              [this](VSTGUI::KeyboardEvent& event) { useKey(event); }};

    // What lies above the controls while a skin is open.
    struct Aids {
        explicit Aids(xmlGuiEditor& editor);
        ValueEntry entry;
        VSTGUI::SharedPointer<COutline> learning;
        VSTGUI::SharedPointer<COutline> focus;
        VSTGUI::SharedPointer<COutline> hover;
        HoverHelp help;
        VSTGUI::SharedPointer<CKeyView> keys;
    };
    std::unique_ptr<Aids> aids_;
    SoundTools tools_{host_};
    SoundBrowser browser_{host_, tools_.history()};
    VSTGUI::ModalViewSessionID browsing_ = 0;
    int learning_ = state::LearnSlot::kNone;  // the parameter outlined
    VSTGUI::SharedPointer<VSTGUI::CVSTGUITimer> learningEnds_;
    std::vector<CDisplay*> readOuts_;
    bool readsNothing_ = false;  // and the read-outs say so

    std::uint64_t released_ = 0;                  // one bit per parameter whose gesture has ended
    const VSTGUI::CView* currentView_ = nullptr;  // under the pointer or dragged; only compared
    int currentTag_ = kNoTag;
    void* parentWindow_ = nullptr;
    bool skinChanged_ = false;
    bool opensChosenSkin_ = false;
    bool inIdle_ = false;
    bool dataFolderScreen_ = false;
    bool missingBankShown_ = false;
};

}  // namespace editor
