#pragma once

#include <optional>
#include <string>
#include <vector>

#include "analysis/coach_answers.h"
#include "base/bilingual.h"
#include "instruments/side_block.h"

namespace keelview {

/// What the tabs of the side panel are made of.
struct SideView {
    const CoachAnswers& Answers;
    bool English = false;
    bool Wide = false;  ///< there is room for all columns
    double Time = 0.0;  ///< the moment of the film, seconds from the start
    int Chosen = 0;     ///< the boat that was clicked last, 0 none
    int Beside = 0;     ///< the one before it, to be compared with
    SideFocus Focus;
    bool LessCurrent = false;  ///< speeds through the water are wished

    std::string Say(const Text& text) const { return text.Str(English); }
    /// "12.3 ±0.4" where there is room, else "12.3"; empty where there is nothing.
    std::string Tell(const std::optional<double>& value, double sigma, int decimals) const;
    const std::string& NameOf(int boat) const { return Answers.Race.Boats[boat].BoatName; }
    int Boats() const { return Answers.Race.Boats.Count(); }
};

/// The order at the moment, what each boat makes good, and the curve of the gaps over the whole race.
SideBlocks BoardTab(const SideView& view);
/// The line, the fleet at the gun, and each boat's start.
SideBlocks StartTab(const SideView& view);
/// What turns cost by boat, the chosen boat's turns one by one, and laid over another's.
SideBlocks TurnsTab(const SideView& view);
/// The wind from the tracks beside the measured one, and the current.
SideBlocks WindTab(const SideView& view);
/// The fleet's speeds by the angle off the wind, the chosen boat's beside them.
SideBlocks PolarTab(const SideView& view);
/// Where each boat lost its time, and the chosen boat leg by leg.
SideBlocks DebriefTab(const SideView& view);

/// A boat's turns between the gun and its finish: before the start nobody sails for speed.
std::vector<Manoeuvre> RacedTurns(const CoachAnswers& answers, int boat);

/// The curves of the gaps to the leader over the whole race.
SidePicture GapPicture(const SideView& view);

/// With so many decimals; empty where there is nothing.
std::string Fixed(const std::optional<double>& value, int decimals);
/// "12.3 ±0.4".
std::string WithSigma(const std::optional<double>& value, double sigma, int decimals);

/// Straight axes of a picture.
class SideAxes {
  public:
    /// The smallest and largest values stand at the edges of the place; they must differ.
    SideAxes(const Bounds& place, double left, double right, double top, double bottom)
        : place_(place), left_(left), right_(right), top_(top), bottom_(bottom) {}

    Point At(double x, double y) const {
        return {place_.Low.X + (x - left_) / (right_ - left_) * (place_.High.X - place_.Low.X),
                place_.Low.Y + (y - top_) / (bottom_ - top_) * (place_.High.Y - place_.Low.Y)};
    }
    double XUnder(double pixels) const {
        return left_ + (pixels - place_.Low.X) / (place_.High.X - place_.Low.X) * (right_ - left_);
    }

  private:
    Bounds place_;
    double left_, right_, top_, bottom_;
};

/// The axes of all curves of the race over time: from the gun at the left to the end at the right.
SideAxes TimeAxes(const SideView& view, const Bounds& place, double top, double bottom);
/// Upright lines at the first times at the entries of the course, with their names at the top.
void DrawEntryTimes(Canvas& page, const SideView& view, const Bounds& place);

}  // namespace keelview
