// Lays out and draws a message with the embedded faces.
#include "platform/message_picture.h"

#include <algorithm>
#include <cmath>

#include "platform/glyphs.h"
#include "platform/utf8.h"

namespace platform {
namespace {

constexpr int kMargin = 24;
constexpr int kIconSize = 40;
constexpr int kIconGap = 18;
constexpr int kNarrowest = 220;  // of the text column, pixels
constexpr int kWidest = 440;
constexpr double kHeadingSize = 16;
constexpr int kHeadingLine = 21;
constexpr size_t kMostHeadingLines = 3;
constexpr double kTextSize = 14;
constexpr int kTextLine = 19;
constexpr int kTextGap = 8;
constexpr int kButtonGap = 22;
constexpr int kButtonWidth = 92;
constexpr int kButtonHeight = 30;
constexpr double kButtonRadius = 4;

constexpr uint32_t kGround = 0xFFF6F5F4;
constexpr uint32_t kHeadingInk = 0xFF1C1C1E;
constexpr uint32_t kTextInk = 0xFF3A3A3C;
constexpr uint32_t kButtonFill = 0xFF2F6DB5;
constexpr uint32_t kButtonPressedFill = 0xFF1F4F87;
constexpr uint32_t kErrorFill = 0xFFC5303A;
constexpr uint32_t kWhite = 0xFFFFFFFF;

using Lines = std::vector<std::string>;

void trimEnd(std::string& line) {
    line.erase(line.find_last_not_of(' ') + 1);
}

// Breaks at line ends, before words that exceed the width, and within words wider than a line.
Lines wrapped(const std::string& text, const SizedFace& face, size_t mostLines) {
    Lines lines;
    std::string line;
    size_t afterSpace = 0;  // in the line
    double width = 0;
    const auto endLine = [&](std::string rest) {
        trimEnd(line);
        lines.push_back(line);
        line = std::move(rest);
        afterSpace = 0;
        width = face.widthOf(line);
    };
    for (size_t position = 0; position < text.size() && lines.size() < mostLines;) {
        char32_t character = utf8::next(text, position);
        if (character == '\n') endLine("");
        if (character == '\t') character = ' ';
        if (character < ' ') continue;
        width += face.toPixels(face.advance(face.glyphOf(character)));
        if (width > kWidest && character != ' ' && !line.empty()) {
            const size_t cut = afterSpace > 0 ? afterSpace : line.size();
            const std::string rest = line.substr(cut);
            line.resize(cut);
            endLine(rest + utf8::encode(character));
            continue;
        }
        line += utf8::encode(character);
        if (character == ' ') afterSpace = line.size();
    }
    if (lines.size() < mostLines) {
        endLine("");
        if (lines.back().empty()) lines.pop_back();
    } else if (!line.empty()) {
        lines.back() += "\u2026";
    }
    return lines;
}

double widestOf(const Lines& lines, const SizedFace& face) {
    double widest = 0;
    for (const std::string& line : lines) widest = std::max(widest, face.widthOf(line));
    return widest;
}

uint32_t blended(uint32_t below, uint32_t colour, uint32_t alpha) {
    uint32_t result = 0xFF000000;
    for (const int shift : {0, 8, 16}) {
        const uint32_t from = below >> shift & 255;
        const uint32_t to = colour >> shift & 255;
        result |= (from * (255 - alpha) + to * alpha + 127) / 255 << shift;
    }
    return result;
}

class Canvas {
  public:
    explicit Canvas(MessagePicture& picture) : picture_(picture) {
        const auto count = static_cast<size_t>(picture.width) * picture.height;
        picture.pixels.assign(count, kGround);
    }

    // Fills the part of the area inside a shape, with smooth edges. distance(x, y) is the signed
    // distance in pixels from the shape's outline, negative inside; x and y count from the centre
    // of the area.
    template <typename Distance>
    void fill(const PixelArea& area, uint32_t colour, Distance distance) {
        const double middleX = 0.5 * (area.left + area.right - 1);
        const double middleY = 0.5 * (area.top + area.bottom - 1);
        for (int y = area.top; y < area.bottom; ++y) {
            for (int x = area.left; x < area.right; ++x) {
                const double inside = 0.5 - distance(x - middleX, y - middleY);
                blend(x, y, colour, static_cast<uint32_t>(std::clamp(inside, 0.0, 1.0) * 255));
            }
        }
    }

    // `y` is the baseline.
    void write(const std::string& text, const SizedFace& face, double x, int y, uint32_t ink) {
        face.forEachGlyph(text, [&](int glyph, int64_t before) {
            const GlyphPlace place = face.place(glyph, x + face.toPixels(before), y);
            const auto coverage = face.coverage(glyph, place);
            auto alpha = coverage.begin();
            for (int row = place.top; row < place.bottom; ++row) {
                for (int column = place.left; column < place.right; ++column)
                    blend(column, row, ink, *alpha++);
            }
        });
    }

    // Returns the top of the next line.
    int write(const Lines& lines, const SizedFace& face, int x, int top, int lineHeight,
              uint32_t ink) {
        const int capitals = static_cast<int>(std::lround(face.toPixels(face.capitalHeight())));
        for (const std::string& line : lines) {
            write(line, face, x, top + (lineHeight + capitals) / 2, ink);
            top += lineHeight;
        }
        return top;
    }

  private:
    void blend(int x, int y, uint32_t colour, uint32_t alpha) {
        if (x < 0 || y < 0 || x >= picture_.width || y >= picture_.height) return;
        uint32_t& pixel = picture_.pixels[static_cast<size_t>(y) * picture_.width + x];
        pixel = blended(pixel, colour, alpha);
    }

    MessagePicture& picture_;
};

void drawErrorSign(Canvas& canvas, int left, int top) {
    const PixelArea area{left, top, left + kIconSize, top + kIconSize};
    canvas.fill(area, kErrorFill,
                [](double x, double y) { return std::hypot(x, y) - 0.5 * kIconSize; });
    canvas.fill(area, kWhite, [](double x, double y) {
        constexpr double kArm = 0.28 * kIconSize;
        constexpr double kHalfStroke = 0.06 * kIconSize;
        constexpr double kDiagonal = 0.70710678;
        const double along = std::abs(x + y) * kDiagonal;
        const double across = std::abs(x - y) * kDiagonal;
        return std::max(std::max(along, across) - kArm, std::min(along, across) - kHalfStroke);
    });
}

void drawButton(Canvas& canvas, const PixelArea& area, const SizedFace& face, bool pressed) {
    canvas.fill(area, pressed ? kButtonPressedFill : kButtonFill, [](double x, double y) {
        const double overX = std::abs(x) - 0.5 * kButtonWidth + kButtonRadius;
        const double overY = std::abs(y) - 0.5 * kButtonHeight + kButtonRadius;
        const double corner = std::hypot(std::max(overX, 0.0), std::max(overY, 0.0));
        return corner + std::min(std::max(overX, overY), 0.0) - kButtonRadius;
    });
    const std::string caption = "OK";
    const int x =
        area.left + static_cast<int>(std::lround((kButtonWidth - face.widthOf(caption)) / 2));
    canvas.write({caption}, face, x, area.top, kButtonHeight, kWhite);
}

}  // namespace

MessagePicture drawMessage(const std::string& title, const std::string& text, MessageIcon icon,
                           bool buttonPressed, int largestHeight) {
    const SizedFace headingFace(true, false, kHeadingSize);
    const SizedFace textFace(false, false, kTextSize);
    const SizedFace buttonFace(true, false, kTextSize);
    const bool saysItTwice = title == text;
    const Lines heading = saysItTwice ? Lines() : wrapped(title, headingFace, kMostHeadingLines);
    const int headingHeight = kHeadingLine * static_cast<int>(heading.size());
    const int gap = heading.empty() ? 0 : kTextGap;
    const int around = 2 * kMargin + headingHeight + gap + kButtonGap + kButtonHeight;
    const int fitting = std::max(1, (largestHeight - around) / kTextLine);
    const Lines body = wrapped(text, textFace, static_cast<size_t>(fitting));

    const double widest = std::max(widestOf(heading, headingFace), widestOf(body, textFace));
    const int column = std::max(kNarrowest, static_cast<int>(std::ceil(widest)));
    const bool hasIcon = icon == MessageIcon::kError;
    const int textLeft = kMargin + (hasIcon ? kIconSize + kIconGap : 0);
    const int bodyHeight = kTextLine * static_cast<int>(body.size());
    const int contents = std::max(headingHeight + gap + bodyHeight, hasIcon ? kIconSize : 0);

    MessagePicture picture;
    picture.width = textLeft + column + kMargin;
    picture.height = kMargin + contents + kButtonGap + kButtonHeight + kMargin;
    picture.button.right = picture.width - kMargin;
    picture.button.left = picture.button.right - kButtonWidth;
    picture.button.bottom = picture.height - kMargin;
    picture.button.top = picture.button.bottom - kButtonHeight;

    Canvas canvas(picture);
    if (hasIcon) drawErrorSign(canvas, kMargin, kMargin);
    const int headingEnd =
        canvas.write(heading, headingFace, textLeft, kMargin, kHeadingLine, kHeadingInk);
    canvas.write(body, textFace, textLeft, headingEnd + gap, kTextLine, kTextInk);
    drawButton(canvas, picture.button, buttonFace, buttonPressed);
    return picture;
}

}  // namespace platform
