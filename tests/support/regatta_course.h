#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "analysis/plane.h"

namespace keelview {

enum class Layout { WindwardLeeward, Gate, Triangle, Trapezoid, Passage };

/// Random numbers that are the same on every system.
class Dice {
  public:
    explicit Dice(unsigned seed) : engine_(seed * 7919 + 13) {}

    double Random() { return static_cast<double>(engine_()) / 4294967296.0; }
    double Between(double low, double high) { return low + (high - low) * Random(); }
    double Gauss() {
        double sum = -6;
        for (int i = 0; i < 12; ++i) sum += Random();
        return sum;
    }

  private:
    std::mt19937 engine_;
};

/// An island, or the head of a shore: no mark of the course, boats sail round it as their way leads.
struct Island {
    Way At;
    double Radius = 0.0;
};

/// What a race committee has laid, on a plane about the middle of the start line.
struct RegattaCourse {
    struct Rounding {
        std::vector<Way> Marks;       ///< one, or the two of a gate: left and right of who comes
        double In = 0.0, Turn = 0.0;  ///< degrees
    };
    std::vector<Rounding> Roundings;
    std::vector<Way> Marks;  ///< in the order of the course
    std::vector<Island> Islands;
    Way Finish, FinishAhead;
    std::string Text;  ///< "L1, MK1, ..."
};

/// Lays a course to the wind, degrees.
class CourseLayer {
  public:
    CourseLayer(double wind, Dice& dice) : wind_(wind), dice_(dice) {}

    RegattaCourse Lay(Layout layout) {
        laid_ = {};
        layout == Layout::Passage ? LayPassage() : LayBuoys(layout);
        Name(layout == Layout::WindwardLeeward);
        return laid_;
    }

  private:
    Way Upwind(double metres, double right = 0) const {
        return Towards(wind_) * metres + Towards(wind_ + 90) * right;
    }
    void Round(std::vector<Way> marks) { laid_.Roundings.push_back({std::move(marks)}); }

    void LayBuoys(Layout layout) {
        const double leg = dice_.Between(550, 1000);
        const double topRight = dice_.Between(-30, 30), bottomRight = dice_.Between(-20, 20);
        const Way top = Upwind(leg, topRight);
        const Way bottom = Upwind(dice_.Between(80, 140), bottomRight);
        switch (layout) {
            case Layout::WindwardLeeward:
            case Layout::Passage:
                for (const Way& mark : {top, bottom, top}) Round({mark});
                break;
            case Layout::Gate: {
                const double half = dice_.Between(22, 38);
                const std::vector<Way> gate{bottom + Upwind(0, half), bottom + Upwind(0, -half)};
                Round({top}), Round(gate), Round({top}), Round(gate);
                laid_.Finish = Upwind(0.75 * leg);
                break;
            }
            case Layout::Triangle: {
                const Way wing = Upwind(leg / 2, -0.55 * leg);
                for (const Way& mark : {top, wing, bottom, top, bottom}) Round({mark});
                laid_.Finish = Upwind(1.15 * leg, 60);
                break;
            }
            case Layout::Trapezoid: {
                const Way wing = top + Towards(wind_ - 105) * (0.7 * leg);
                const Way low = wing + Towards(wind_ + 180) * (0.8 * leg);
                for (const Way& mark : {top, wing, low, wing, low}) Round({mark});
                laid_.Finish = low + Towards(wind_ + 105) * 320;
                break;
            }
        }
    }

    void LayPassage() {
        Way at;
        double course = wind_ + dice_.Between(-20, 20);
        for (int mark = 0; mark < 5; ++mark) {
            at = at + Towards(course) * dice_.Between(900, 1700);
            Round({at});
            const double turn = dice_.Between(45, 110);
            course += mark == 3 && dice_.Random() < 0.5 ? turn : -turn;
        }
        laid_.Finish = at + Towards(course) * dice_.Between(500, 900);
        for (int leg = 1; leg < 5; ++leg)
            LayLand(laid_.Roundings[leg - 1U].Marks.front(), laid_.Roundings[leg + 0U].Marks.front());
    }

    /// On half of the legs land lies in the way: an island, or the head of a shore that reaches over it.
    /// Marks are well off it.
    void LayLand(Way from, Way to) {
        if (dice_.Random() < 0.5) return;
        const double length = (to - from).Length();
        const bool head = dice_.Random() < 0.5;
        const double radius = length * (head ? dice_.Between(0.2, 0.4) : dice_.Between(0.05, 0.15));
        const double over = head ? dice_.Between(10, 60) : radius * dice_.Between(0.2, 1.8);
        const double side = dice_.Random() < 0.5 ? -90 : 90;
        const Way at = from + (to - from) * dice_.Between(0.45, 0.55) +
                       Towards((to - from).Bearing() + side) * (radius - over);
        const auto isOff = [&](Way mark) { return (mark - at).Length() > radius + 160; };
        if (!isOff({}) || !isOff(laid_.Finish)) return;
        for (const RegattaCourse::Rounding& each : laid_.Roundings)
            if (!isOff(each.Marks.front())) return;
        laid_.Islands.push_back({at, radius});
    }

    int NumberOf(Way mark) {
        for (std::size_t i = 0; i < laid_.Marks.size(); ++i)
            if (laid_.Marks[i] == mark) return static_cast<int>(i) + 1;
        laid_.Marks.push_back(mark);
        return static_cast<int>(laid_.Marks.size());
    }
    static Way MiddleOf(const RegattaCourse::Rounding& rounding) {
        return (rounding.Marks.front() + rounding.Marks.back()) * 0.5;
    }

    /// Works out from where to where each rounding leads.
    void Name(bool finishAtStart) {
        Way before;
        laid_.Text = "L1";
        for (std::size_t i = 0; i < laid_.Roundings.size(); ++i) {
            RegattaCourse::Rounding& each = laid_.Roundings[i];
            const Way here = MiddleOf(each);
            const Way next =
                i + 1 < laid_.Roundings.size() ? MiddleOf(laid_.Roundings[i + 1]) : laid_.Finish;
            each.In = (here - before).Bearing();
            each.Turn = std::remainder((next - here).Bearing() - each.In, 360.0);
            // Where the way leads straight back marks are left to port.
            if (each.Turn > 150) each.Turn -= 360;
            before = here;
            std::string name;
            for (const Way& mark : each.Marks)
                name += (name.empty() ? "MK" : "/MK") + std::to_string(NumberOf(mark));
            laid_.Text += ", " + name;
        }
        laid_.FinishAhead = Towards((laid_.Finish - before).Bearing());
        laid_.Text += finishAtStart ? ", L1" : ", L2";
    }

    double wind_;
    Dice& dice_;
    RegattaCourse laid_;
};

}  // namespace keelview
