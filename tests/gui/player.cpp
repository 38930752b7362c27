// The words of the pointer, the keys and the pixels.
#include "tests/gui/player.h"

#include <algorithm>
#include <cstdio>
#include <sstream>

namespace script {

using namespace VSTGUI;

CRect rectangle(std::istream& words) {
    CRect rect;
    const std::string text = word(words);
    if (std::sscanf(text.c_str(), "%lf,%lf,%lf,%lf", &rect.left, &rect.top, &rect.right,
                    &rect.bottom) != 4)
        ADD_FAILURE() << "no rectangle: " << text;
    return rect;
}

Player::Player(std::function<CFrame*()> frame, std::function<std::string()> reported,
               headless::HeldClock& clock)
    : frame_(std::move(frame)), reported_(std::move(reported)), clock_(clock) {
    addPointer();
    addKeys();
    addLooks();
}

void Player::addPointer() {
    const auto add = [this](const char* name, auto act) {
        commands[name] = [this, act](std::istream& words) {
            at_ = point(words);
            const int32_t button = modifiers_ & kRButton ? 0 : kLButton;
            act(*frame_(), at_, CButtonState(modifiers_ | button));
        };
    };
    add("down", headless::press);
    add("move", headless::move);
    add("up", headless::release);
    add("click", headless::click);
    commands["hover"] = [this](std::istream& words) {
        headless::move(*frame_(), at_ = point(words), modifiers_);
    };
    commands["leave"] = [this](std::istream&) { headless::leave(*frame_()); };
    commands["wheel"] = [this](std::istream& words) {
        at_ = point(words);
        const double up = number(words);
        double right = 0;
        if (words >> std::ws &&
            std::string("-0123456789").find(static_cast<char>(words.peek())) != std::string::npos)
            right = number(words);
        words.clear();
        headless::wheel(*frame_(), at_, up, modifiers_, right);
    };
}

void Player::addKeys() {
    commands["key"] = [this](std::istream& words) {
        const std::pair<const char*, VirtualKey> keys[] = {
            {"Back", VirtualKey::Back},     {"Return", VirtualKey::Return},
            {"Escape", VirtualKey::Escape}, {"End", VirtualKey::End},
            {"Home", VirtualKey::Home},     {"Left", VirtualKey::Left},
            {"Up", VirtualKey::Up},         {"Right", VirtualKey::Right},
            {"Down", VirtualKey::Down},     {"Delete", VirtualKey::Delete},
            {"PageUp", VirtualKey::PageUp}, {"PageDown", VirtualKey::PageDown},
            {"Tab", VirtualKey::Tab},       {"F2", VirtualKey::F2}};
        const std::string name = word(words);
        for (const auto& [known, code] : keys)
            if (name == known && !headless::key(*frame_(), code, modifiers_)) say("unused");
    };
    commands["type"] = [this](std::istream& words) {
        if (!headless::type(*frame_(), word(words).c_str(), modifiers_)) say("unused");
    };
    commands["wait"] = [this](std::istream& words) {
        clock_.run(*frame_(), static_cast<uint64_t>(number(words)));
    };
    commands["focus"] = [this](std::istream&) { say(frame_()->getFocusView() ? "yes" : "no"); };
}

void Player::addLooks() {
    commands["see"] = [this](std::istream& words) {
        const CPoint where = point(words);
        const uint32_t pixel =
            headless::picture(*frame_()).at(static_cast<int>(where.x), static_cast<int>(where.y));
        char text[8];
        std::snprintf(text, sizeof text, "%06x", pixel & 0xFFFFFF);
        say(text);
    };
    commands["look"] = [this](std::istream&) {
        const uint64_t hash = headless::hashOf(headless::picture(*frame_()));
        const auto found = std::find(looks_.begin(), looks_.end(), hash);
        const auto index = found - looks_.begin();
        if (found == looks_.end()) looks_.push_back(hash);
        say(std::string(1, static_cast<char>('A' + index)));
    };
    commands["modal"] = [this](std::istream&) {
        const CView* const view = frame_()->getModalView();
        if (!view) return say("none");
        const CRect area = view->getViewSize();
        std::ostringstream text;
        text << area.left << ',' << area.top << ',' << area.right << ',' << area.bottom;
        say(text.str());
    };
}

CPoint Player::point(std::istream& words) {
    constexpr int kRow = 20;  // the standard font's 12 and 8
    const auto before = words.tellg();
    const std::string text = word(words);
    CPoint where;
    int row = 0;
    if (std::sscanf(text.c_str(), "%lf,%lf", &where.x, &where.y) == 2) return where;
    if (std::sscanf(text.c_str(), "row:%d", &row) == 1) {
        const CView* const menu = frame_()->getModalView();
        if (menu) return menu->getViewSize().getTopLeft() + CPoint(30, 1 + kRow * row + kRow / 2.0);
        ADD_FAILURE() << "no menu is open";
        return where;
    }
    words.clear();
    words.seekg(before);
    return at_;
}

void Player::prepare(std::string& name) {
    const std::pair<std::string, int32_t> prefixes[] = {
        {"shift+", kShift},  {"ctrl+", kControl},  {"alt+", kAlt},
        {"left+", kLButton}, {"right+", kRButton}, {"double+", kDoubleClick}};
    modifiers_ = 0;
    for (std::size_t plus = name.find('+'); plus != std::string::npos; plus = name.find('+')) {
        for (const auto& [prefix, bit] : prefixes)
            if (name.compare(0, plus + 1, prefix) == 0) modifiers_ |= bit;
        name.erase(0, plus + 1);
    }
}

}  // namespace script
