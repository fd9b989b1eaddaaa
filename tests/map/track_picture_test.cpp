#include <gtest/gtest.h>

#include <QImage>
#include <QWidget>
#include <algorithm>

#include "support/album.h"
#include "support/sailed_race.h"
#include "support/test_desk.h"

namespace keelview {
namespace {

struct TrackPictureTest : testing::Test, TestDesk {
    QImage Drawn(const Control& picture) const {
        desk->session.TheStage().Repaint(Changed::All);
        driver::Settle();
        return driver::Face(picture).grab().toImage();
    }
};

TEST_F(TrackPictureTest, FromAFractionOfTheFixesTracksLookAsFromAllOfThem) {
    SailedRace(3, 5).Write(tree, "R1.txt");
    Open();
    const auto details = app.details;
    ASSERT_EQ(details.Count(), 5);
    // On the small overview dozens of fixes to a pixel make a line of all of them denser than a line is.
    for (const auto& [picture, most] :
         {std::pair<const Control*, int>{&Map(), 100}, {&Form().Picture6, 160}})
        for (const double zoom : {0.5, 1.0, 4.0, 30.0}) {
            app.view.ZoomFactor = app.view.ManualZoom = zoom;
            app.details = details;
            const QImage fast = Drawn(*picture);
            app.details.Clear();
            const QImage slow = Drawn(*picture);
            EXPECT_LE(std::max(Furthest(fast, slow), Furthest(slow, fast)), 160) << zoom;
        }
    app.details = details;
    const QImage before = Drawn(Map());
    for (auto& boat : app.details) boat.Assign(boat.Count(), 0.0F);  // nothing but the ends
    EXPECT_GT(Furthest(before, Drawn(Map())), 200);
}

}  // namespace
}  // namespace keelview
