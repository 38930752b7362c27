// Pixels: blending, rectangles, lines, ellipses, pictures, text and enlarging.
#include "gui/graphics/row_scaler.h"
#include "gui/graphics/scale.h"
#include "gui/graphics/text.h"
#include "gui/graphics/wide_vectors.h"
#include "tests/gui/gui_fixture.h"

#include <cmath>
#include <memory>
#include <typeinfo>

namespace VSTGUI {
namespace {

class Drawing : public ::testing::Test {
  protected:
    Drawing() : pixels(60, 40) {
        init(nullptr);
        fillArea(pixels, pixels.bounds(), premultiplied(kBlackCColor));
        context = std::make_unique<CDrawContext>(pixels, pixels.bounds());
    }
    ~Drawing() override {
        context.reset();
        exit();
    }

    // The smallest rectangle around all pixels that are not black.
    CRect inked() const {
        CRect box(1000, 1000, 0, 0);
        for (int y = 0; y < pixels.height(); ++y)
            for (int x = 0; x < pixels.width(); ++x)
                if (pixels.at(x, y) != 0xFF000000) box.unite(CRect(x, y, x + 1, y + 1));
        return box;
    }
    int inkedPixels() const {
        int count = 0;
        for (int y = 0; y < pixels.height(); ++y)
            for (int x = 0; x < pixels.width(); ++x) count += pixels.at(x, y) != 0xFF000000;
        return count;
    }

    PixelBuffer pixels;
    std::unique_ptr<CDrawContext> context;
};

TEST(Blending, RoundsToTheNearestForAllBytes) {
    for (uint32_t a = 0; a < 256; ++a)
        for (uint32_t b = 0; b < 256; ++b)
            ASSERT_EQ(times255(a, b), (2 * a * b + 255) / 510) << a << " " << b;
}

TEST(Blending, NeverOverflowsAChannel) {
    for (uint32_t alpha = 0; alpha < 256; ++alpha) {
        const uint32_t white = premultiplied(CColor(255, 255, 255, static_cast<uint8_t>(alpha)));
        EXPECT_EQ(over(white, 0xFFFFFFFF), 0xFFFFFFFF) << alpha;
    }
    EXPECT_EQ(over(premultiplied(CColor(255, 0, 0, 128)), 0xFF0000FF), 0xFF80007Fu);
}

TEST_F(Drawing, CoversExactlyTheRectangleItsOutermostRingOrTheLineWithBothEnds) {
    context->setFillColor(kRedCColor);
    context->drawRect(CRect(5, 6, 15, 26), kDrawFilled);
    EXPECT_EQ(inked(), CRect(5, 6, 15, 26));
    EXPECT_EQ(inkedPixels(), 200);
    EXPECT_EQ(pixels.at(5, 6), 0xFFFF0000u);
    context->drawRect(CRect(20, 6, 30, 26));
    EXPECT_EQ(inked(), CRect(5, 6, 30, 26));
    EXPECT_EQ(inkedPixels(), 200 + 2 * 10 + 2 * 18);
    context->setLineWidth(3);
    context->drawRect(CRect(30, 6, 40, 16));
    EXPECT_EQ(inkedPixels(), 256 + 100 - 16);
    context->setLineWidth(1);
    context->drawLine(CPoint(1, 30), CPoint(1, 35));
    context->drawLine(CPoint(40, 20), CPoint(50, 30));
    EXPECT_EQ(inkedPixels(), 340 + 6 + 11);
    EXPECT_EQ(pixels.at(45, 25), 0xFFFFFFFFu);
}

TEST_F(Drawing, BlendsAStrokeOnceEvenWhenItIsWiderThanTheRectangle) {
    context->setFrameColor(CColor(255, 255, 255, 100));
    context->setLineWidth(7);
    for (const CRect& rect : {CRect(0, 0, 3, 9), CRect(10, 0, 19, 3), CRect(30, 0, 31, 1)})
        context->drawRect(rect);
    EXPECT_EQ(inkedPixels(), 27 + 27 + 1);
    for (int y = 0; y < 9; ++y)
        for (int x = 0; x < 40; ++x)
            if (pixels.at(x, y) != 0xFF000000) {
                ASSERT_EQ(pixels.at(x, y), 0xFF646464u) << x << " " << y;
            }
}

TEST_F(Drawing, StaysInsideTheClipAndTheClipInsideTheView) {
    context->setFillColor(kWhiteCColor);
    context->drawInside(CRect(10, 10, 30, 30), 1, [&] {
        EXPECT_EQ(context->getFillColor(), kBlackCColor) << "from the initial state";
        context->setFillColor(kWhiteCColor);
        context->setClipRect(CRect(20, 0, 60, 20));
        context->drawRect(CRect(0, 0, 60, 40), kDrawFilled);
    });
    EXPECT_EQ(inked(), CRect(20, 10, 30, 20));
    context->drawInside(CRect(70, 10, 90, 30), 1, [] { FAIL() << "nothing can be seen"; });
    context->drawInside(CRect(10, 10, 30, 30), 0, [] { FAIL() << "nothing can be seen"; });
}

TEST_F(Drawing, FindsItsStateAgainWhateverAViewSavesAndRestores) {
    context->setFillColor(kRedCColor);
    context->saveGlobalState();
    context->drawInside(CRect(10, 10, 30, 30), 1, [&] {
        for (int i = 0; i < 3; ++i) context->restoreGlobalState();
        context->setFillColor(kBlueCColor);
        for (int i = 0; i < 3; ++i) context->saveGlobalState();
    });
    EXPECT_EQ(context->getFillColor(), kRedCColor);
    context->setFillColor(kGreenCColor);
    context->restoreGlobalState();
    EXPECT_EQ(context->getFillColor(), kRedCColor);
    CRect clip;
    EXPECT_EQ(context->getClipRect(clip), CRect(0, 0, 60, 40));
}

TEST_F(Drawing, CopiesPicturesFromTheOffsetAndStopsWhereTheyEnd) {
    const auto picture = gradient(20, 20);
    picture->draw(context.get(), CRect(10, 10, 40, 18), CPoint(5, 3));
    EXPECT_EQ(pixels.at(10, 10), 0xFF050300u);
    EXPECT_EQ(pixels.at(24, 17), 0xFF130A00u);
    EXPECT_EQ(inked(), CRect(10, 10, 25, 18));
    plain(4, 4, kWhiteCColor)->draw(context.get(), CRect(50, 30, 54, 34), CPoint(), 0.5f);
    EXPECT_EQ(pixels.at(50, 30), 0xFF808080u);
    CBitmap empty{PlatformBitmapPtr()};
    EXPECT_FALSE(empty.isLoaded());
    context->drawBitmap(&empty, CRect(0, 0, 9, 9));
    EXPECT_EQ(pixels.at(0, 0), 0xFF000000u);
}

TEST_F(Drawing, PutsCapitalsInTheMiddleOfTheRectanglesHeight) {
    const auto font = makeOwned<CFontDesc>("Arial", 20);
    const double capitals = capitalHeight(*font);
    EXPECT_NEAR(capitals, 20 * 0.688, 0.1) << "1409 of 2048 units";
    context->setFont(font);
    context->drawString("H", CRect(0, 0, 60, 40), kLeftText);
    EXPECT_NEAR(inked().getCenter().y, 20, 0.5);
    EXPECT_NEAR(inked().getHeight(), capitals, 1);
    EXPECT_NEAR(context->getStringWidth("00"), 2 * 20 * 0.5562, 0.01) << "as wide as Arial's";
}

TEST_F(Drawing, TakesHostileTextAndSizes) {
    context->drawString("\xFF\xC3 \x01\n", CPoint(4, 25));
    context->drawString(nullptr, CRect(0, 0, 60, 40));
    context->drawString("", CRect(0, 0, 60, 40));
    context->drawString(std::string(100000, 'W').c_str(), CRect(0, 0, 60, 40));
    context->drawString("x", CPoint(NAN, 1e300));
    context->setFont(kNormalFont, 1e9);
    context->drawString("W", CPoint(0, 20));
    context->drawRect(CRect(-1e18, NAN, 1e18, 1e18), kDrawFilledAndStroked);
    context->drawEllipse(CRect(-1e9, -1e9, 1e9, 1e9), kDrawFilledAndStroked);
    context->setClipRect(CRect(50, 50, 10, 10));
    context->drawRect(CRect(0, 0, 60, 40), kDrawFilled);
}

TEST_F(Drawing, StrokesLinesWithRoundJointsThatAreNotThicker) {
    context->setFrameColor(CColor(255, 255, 255, 128));
    context->setDrawMode(kAntiAliasing | kNonIntegralMode);
    context->setLineWidth(4);
    const auto line = owned(context->createGraphicsPath());
    for (const CPoint& point : {CPoint(10, 10), CPoint(30, 10), CPoint(30, 30)})
        line->addLine(point);
    context->drawGraphicsPath(line, CDrawContext::kPathStroked);
    EXPECT_EQ(inked(), CRect(8, 8, 32, 32));
    EXPECT_EQ(pixels.at(20, 9), 0xFF808080u);
    EXPECT_EQ(pixels.at(29, 10), 0xFF808080u);  // both pieces hold it
    for (const int x : {8, 31}) {               // an end, a joint: a quarter circle
        EXPECT_GT(pixels.at(x, 8), 0xFF202020u) << x;
        EXPECT_LT(pixels.at(x, 8), 0xFF606060u) << x;
    }
}

// Every system and build draws the same bytes. A change of the picture changes the numbers.
TEST_F(Drawing, GivesTheKnownBytes) {
    context->setFillColor(CColor(200, 40, 30, 180));
    context->setFrameColor(CColor(30, 220, 90));
    context->setDrawMode(kAntiAliasing);
    context->drawEllipse(CRect(3, 5, 44, 32), kDrawFilled);
    const auto ring = owned(context->createGraphicsPath());
    ring->addEllipse(CRect(3.5, 5.5, 43.5, 31.5));
    context->drawGraphicsPath(ring, CDrawContext::kPathStroked);
    context->setLineWidth(2.5);
    context->drawLine(CPoint(1, 38), CPoint(58, 3));
    EXPECT_EQ(headless::hashOf(pixels), 2450346129912770639u);
    context->setFont(kNormalFont, 13, kBoldFace);
    context->drawString("Strings \xC3\xA4", CRect(0, 0, 60, 40));
    context->setFont(kNormalFontSmaller, 0, kItalicFace);
    context->drawString("0.618", CPoint(3.4, 36));
    EXPECT_EQ(headless::hashOf(pixels), 8144898946007338152u);
    context->setFont(kNormalFont, 11, kUnderlineFace | kStrikethroughFace);
    context->drawString("Viola", CPoint(25, 30));
    context->drawRoundRect(CRect(30, 4, 50, 24), 6, kDrawFilledAndStroked);
    EXPECT_EQ(headless::hashOf(pixels), 9049431398993426514u);
}

PixelBuffer scaled(const PixelBuffer& picture, double step, const IntRect& part) {
    PixelBuffer target(nearestPixel(part.width() / step), nearestPixel(part.height() / step));
    blendScaled(target, target.bounds(), picture, part, -part.left / step, -part.top / step, step,
                255);
    return target;
}

TEST(Scaling, KeepsPlainColoursAndLetsNothingShineInFromOutsideThePart) {
    PixelBuffer strip(30, 60);
    const IntRect frame{0, 20, 30, 40};
    fillArea(strip, strip.bounds(), 0xFFFFFFFF);
    fillArea(strip, frame, 0xFF123456);
    for (const double zoom : {0.5, 0.625, 1.0, 1.25, 1.5, 2.0, 3.0}) {
        const PixelBuffer target = scaled(strip, 1 / zoom, frame);
        ASSERT_EQ(target.width(), nearestPixel(30 * zoom)) << zoom;
        for (int y = 0; y < target.height(); ++y)
            for (int x = 0; x < target.width(); ++x) ASSERT_EQ(target.at(x, y), 0xFF123456u);
    }
}

TEST(Scaling, MixesNeighboursWhenLargerAndAllThatIsCoveredWhenSmaller) {
    PixelBuffer source(2, 1);
    source.row(0)[0] = 0xFF000000;
    source.row(0)[1] = 0xFFFFFFFF;
    const PixelBuffer larger = scaled(source, 0.5, source.bounds());
    EXPECT_EQ(larger.at(0, 0), 0xFF000000u);
    EXPECT_EQ(larger.at(1, 1), 0xFF404040u);
    EXPECT_EQ(larger.at(2, 1), 0xFFBFBFBFu);
    EXPECT_EQ(larger.at(3, 0), 0xFFFFFFFFu);
    PixelBuffer four(4, 2);
    for (int x = 0; x < 4; ++x) four.row(0)[x] = four.row(1)[x] = x < 2 ? 0xFF000000 : 0xFF808080;
    const PixelBuffer smaller = scaled(four, 4.0 / 3, four.bounds());
    EXPECT_EQ(smaller.at(0, 0), 0xFF000000u);
    EXPECT_EQ(smaller.at(1, 0), 0xFF404040u);
    EXPECT_EQ(smaller.at(2, 0), 0xFF808080u);
}

// Rows of 13 columns, so that some are left over from any group.
TEST(Scaling, GivesTheSameBytesWithAndWithoutWideVectors) {
    if (!hasWideVectors()) GTEST_SKIP() << "no AVX2";
    uint32_t state = 1;
    const auto next = [&state] { return state = state * 1664525 + 1013904223; };
    for (const int tapCount : {2, kMostTaps}) {
        std::vector<Taps> columns(13, Taps{-1, {}, {}});
        std::vector<Taps> lines(40, Taps{});
        for (auto* const taps : {&columns, &lines})
            for (Taps& place : *taps)
                for (uint32_t left = kWholeWeight, i = 0; left > 0; left -= place.weight[i++])
                    place.weight[i] =
                        static_cast<int>(i) == tapCount - 1 ? left : next() % (left + 1);
        lines[0].weight = {0, kWholeWeight};
        for (size_t x = 0; x < columns.size(); ++x)
            columns[x].begin = static_cast<int>(x * 2 / 3) - 1;
        const auto plain = makePlainRowScaler(columns, tapCount);
        const auto wide = makeRowScaler(columns, tapCount);
        ASSERT_NE(typeid(*wide), typeid(*plain));
        std::array<std::vector<uint32_t>, kMostTaps> plainRows, wideRows;
        std::array<const uint32_t*, kMostTaps> plainAt{}, wideAt{};
        for (size_t i = 0; i < plainAt.size(); ++i) {
            std::vector<uint32_t> pixels(columns.back().begin + 1 + kMostTaps);
            for (uint32_t& pixel : pixels) pixel = next() >> 3 | (i % 2 == 0 ? 0xFF000000 : 0);
            auto same = pixels;
            plainRows[i].resize(plain->rowSize());
            wideRows[i].resize(wide->rowSize());
            EXPECT_EQ(plain->across(pixels, plainRows[i]), i % 2 == 0);
            EXPECT_EQ(wide->across(same, wideRows[i]), i % 2 == 0);
            plainAt[i] = plainRows[i].data();
            wideAt[i] = wideRows[i].data();
        }
        for (const Taps& line : lines) {
            std::array<uint32_t, 13> expected{}, actual{};
            plain->add(plainAt, line, expected.data(), expected.size());
            wide->add(wideAt, line, actual.data(), actual.size());
            EXPECT_EQ(actual, expected);
        }
    }
}

TEST(Bitmap, IsDrawnFromTheSharpnessThatFitsTheZoom) {
    const auto picture = plain(10, 20, kRedCColor);
    const auto add = [&](int width, int height, CColor color, double scale) {
        const auto pixels = plain(width, height, color)->getPlatformBitmap();
        pixels->setScaleFactor(scale);
        return picture->addBitmap(pixels);
    };
    EXPECT_EQ(picture->getBestPlatformBitmapForScaleFactor(3)->getScaleFactor(), 1);
    EXPECT_TRUE(add(20, 40, kGreenCColor, 2));
    EXPECT_FALSE(add(20, 40, kBlueCColor, 2)) << "there is one";
    EXPECT_FALSE(add(30, 59, kBlueCColor, 3)) << "another size";
    EXPECT_EQ(picture->getSize(), CPoint(10, 20));
    for (const double zoom : {1.0, 1.25, 1.5, 2.0, 3.0}) {
        SCOPED_TRACE(zoom);
        PixelBuffer buffer(60, 90);
        CDrawContext context(buffer, buffer.bounds(), zoom);
        picture->draw(&context, CRect(4, 4, 14, 14), CPoint(0, 10));
        const uint32_t wanted = zoom == 1 ? 0xFFFF0000 : 0xFF00FF00;
        EXPECT_EQ(buffer.at(nearestPixel(4 * zoom), nearestPixel(4 * zoom)), wanted);
        EXPECT_EQ(buffer.at(nearestPixel(14 * zoom) - 1, nearestPixel(14 * zoom) - 1), wanted);
        EXPECT_EQ(buffer.at(nearestPixel(14 * zoom), nearestPixel(9 * zoom)), 0u);
    }
}

}  // namespace
}  // namespace VSTGUI
