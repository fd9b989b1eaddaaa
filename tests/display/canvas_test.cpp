#include <gtest/gtest.h>

#include <QPixmap>
#include <QTest>
#include <QWidget>
#include <algorithm>
#include <cstdlib>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "display/control.h"
#include "display/form.h"
#include "support/qt_driver.h"

namespace keelview {
namespace {

TEST(Sprite, CoversNoMoreThanItsShapeAndTakesTheGroundIntoItsEdges) {
    Form form("Form", Form::Kind::Fixed, 60, 60);
    Surface map(form, "Map", BorderStyle::None);
    map.Move(0, 0, 60, 60);
    map.SetBackColor(White);
    map.FilledBox(0, 0, 29, 59, Black);  // the boat lies half on black and half on white
    Sprite boat(map, "Boat", 40, 40);
    boat.Move(10, 10);
    boat.Fill = FillStyle::Solid;
    boat.FillColor = boat.ForeColor = Red;
    boat.Polygon(std::vector<Point>{{20, 3.4}, {33, 30}, {7, 30}});
    form.ShowNow();
    const QImage seen = driver::Face(map).grab().toImage();
    EXPECT_EQ(seen.pixelColor(30, 35), QColor(255, 0, 0));
    EXPECT_EQ(seen.pixelColor(12, 12), QColor(0, 0, 0));
    EXPECT_EQ(seen.pixelColor(47, 12), QColor(255, 255, 255));
    int edges = 0;
    for (int y = 0; y < 60; ++y) {
        for (int x = 0; x < 60; ++x) {
            const QColor at = seen.pixelColor(x, y);
            // Between black and red there is no green and no blue; between white and red, all red.
            EXPECT_TRUE(x < 30 ? at.green() + at.blue() <= 2 : at.red() >= 253) << x << " " << y;
            edges += at.green() == at.blue() && at.red() != 0 && at.red() != 255 ? 1 : 0;
        }
    }
    EXPECT_GT(edges, 20);
    boat.Cls();
    EXPECT_EQ(driver::Face(map).grab().toImage().pixelColor(30, 35), QColor(255, 255, 255));
}

TEST(Canvas, ManyLinesAtOnceLookAsOneAfterAnother) {
    Form form("Form", Form::Kind::Fixed, 400, 200);
    Surface one(form, "One", BorderStyle::None), many(form, "Many", BorderStyle::None);
    std::mt19937 random(5);
    std::uniform_real_distribution<double> place(-50, 250);
    std::vector<std::vector<Point>> ways;
    std::vector<ColouredLine> lines;
    for (const Colour ink : {Red, Blue, Black, Yellow, White})
        for (int line = 0; line < 4; ++line) {
            std::vector<Point> way;
            for (int i = 0; i < 31; ++i) way.push_back({place(random), place(random)});
            way.push_back({way.back().X, place(random)});  // an upright one
            ways.push_back(std::move(way));
            lines.push_back({.Points = ways.back(), .Ink = ink, .Separate = line == 0});
        }
    for (const auto& [width, style] : {std::pair{1, DrawStyle::Solid}, {3, DrawStyle::Dotted}}) {
        for (Surface* surface : {&one, &many}) {
            surface->Move(0, 0, 200, 200);
            surface->Cls();
            surface->DrawWidth = width;
            surface->Style = style;
        }
        for (const ColouredLine& line : lines)
            line.Separate ? one.Segments(line.Points, line.Ink) : one.Polyline(line.Points, line.Ink);
        many.Lines(lines);
        const Picture first = one.Image(), second = many.Image();
        int apart = 0;
        for (int y = 0; y < first.Height(); ++y)
            for (int x = 0; x < first.Width(); ++x) {
                const ColourParts a = PartsOf(first.PixelAt(x, y)), b = PartsOf(second.PixelAt(x, y));
                apart = std::max({apart, std::abs(a.Red - b.Red), std::abs(a.Green - b.Green),
                                  std::abs(a.Blue - b.Blue)});
            }
        EXPECT_LE(apart, 4);
    }
}

struct ToldCanvas : Canvas {
    Bounds Told;

    ToldCanvas() { RenewImage(60, 40); }
    const Pixels& Seen() const { return Retained(); }
    void Changed(const Bounds& part) override { Told.Add(part); }
};

TEST(Canvas, TheScreenIsToldOfEveryPixelThatHasChanged) {
    ToldCanvas canvas;
    std::mt19937 random(7);
    const auto any = [&](double most) { return std::uniform_real_distribution(-5.0, most)(random); };
    for (int i = 0; i < 600; ++i) {
        const Pixels before = canvas.Seen();
        const Colour colour = Rgb(i % 251, 100, i % 7 * 30);
        canvas.Told = {};
        canvas.DrawWidth = 1 + i / 6 % 4;
        canvas.Fill = i / 6 % 2 == 0 ? FillStyle::Solid : FillStyle::None;
        canvas.ForeColor = canvas.FillColor = canvas.BackColor = colour;
        const Point ways[] = {{any(65), any(45)}, {any(65), any(45)}, {any(65), any(45)}};
        const auto& [from, to, last] = ways;
        const ColouredLine line{.Points = ways, .Ink = colour};
        switch (i % 7) {
            case 0:
                canvas.Line(from.X, from.Y, to.X, to.Y);
                break;
            case 1:
                canvas.Circle(from.X, from.Y, any(25) + 5.3);
                break;
            case 2:
                canvas.FilledBox(from.X, from.Y, to.X, to.Y, colour);
                break;
            case 3:
                canvas.Polygon(ways);
                break;
            case 4:
                canvas.Polyline(ways, colour);
                break;
            case 5:
                canvas.Lines({&line, 1});
                break;
            default:
                canvas.Cls();
        }
        const Bounds& told = canvas.Told;
        for (int y = 0; y < 40; ++y)
            for (int x = 0; x < 60; ++x)
                ASSERT_TRUE(
                    before.Row(y)[x] == canvas.Seen().Row(y)[x] ||
                    (x + 1 > told.Low.X && x < told.High.X && y + 1 > told.Low.Y && y < told.High.Y))
                    << i << ": " << x << " " << y;
    }
}

TEST(Canvas, APictureThatIsGivenRoomKeepsWhatItShowed) {
    struct RoomyCanvas : ToldCanvas {
        using Canvas::ResizeImage;
    } canvas;
    canvas.FilledBox(10, 10, 29, 29, Red);
    const Pixels before = canvas.Seen();
    canvas.ResizeImage(90, 30);
    ASSERT_EQ(std::pair(canvas.Seen().Width, canvas.Seen().Height), std::pair(90, 30));
    for (int y = 0; y < 30; ++y)
        EXPECT_TRUE(std::equal(before.Row(y), before.Row(y) + 60, canvas.Seen().Row(y)));
}

TEST(Timer, RunsWhileItIsEnabledAndHasAnInterval) {
    Timer timer;
    int ticks = 0;
    timer.OnTimer = [&ticks] { ++ticks; };
    timer.SetEnabled(true);
    QTest::qWait(20);
    EXPECT_EQ(ticks, 0);
    timer.SetInterval(1);
    EXPECT_TRUE(QTest::qWaitFor([&ticks] { return ticks > 1; }));
    timer.SetInterval(0);
    const int before = ticks;
    QTest::qWait(20);
    EXPECT_EQ(ticks, before);
}

TEST(Event, ASecondHandlerIsRefusedUntilTheFirstIsCleared) {
    Event<int> event;
    std::string told;
    const auto handler = [&told](char name) {
        return [&told, name](int value) { told += name + std::to_string(value); };
    };
    event(1);
    event = handler('a');
#ifdef NDEBUG
    testing::internal::CaptureStderr();
    event = handler('b');
    EXPECT_NE(testing::internal::GetCapturedStderr().find("second handler"), std::string::npos);
#else
    EXPECT_DEATH(event = handler('b'), "second handler");
#endif
    event(2);
    event.Clear();
    event = handler('b');
    event(3);
    EXPECT_EQ(told, "a2b3");
}

}  // namespace
}  // namespace keelview
