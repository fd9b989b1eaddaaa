#pragma once

#include <optional>

#include "base/bilingual.h"
#include "map/map_tool.h"
#include "session/app_state.h"
#include "session/race_changes.h"
#include "session/race_disp.h"

namespace keelview {

/// What the tools that place something have in common: a right click removes the mark or line that is
/// nearest, and a click with Shift moves the view.
class PlaceTool : public MapTool {
  public:
    Click Press(const MouseEvent& event, const Position& at) final;

  protected:
    PlaceTool(const AppState& app, RaceDisp& form, RaceChanges& changes);

    /// Says beside the pointer what to do, where hints are wanted.
    void ShowToolHint(const MouseEvent& event, const Text& hint, double width);
    /// Its hint has been followed, and may lie where the next click goes.
    Click Finish();

    const AppState& app_;
    RaceDisp& form_;
    RaceChanges& changes_;

  private:
    virtual Click Place(const Position& at) = 0;
};

/// Command2: one click places a mark.
class PlaceMark : public PlaceTool {
  public:
    PlaceMark(const AppState& app, RaceDisp& form, RaceChanges& changes);

    void Follow(const MouseEvent& event, const Position& at) override;
    void Enter() override;
    void Leave() override;

  private:
    Click Place(const Position& at) override;
};

/// Command3: two clicks place a line by its ends; a rubber band follows the pointer between them.
class PlaceLine : public PlaceTool {
  public:
    PlaceLine(const AppState& app, RaceDisp& form, RaceChanges& changes);

    void Follow(const MouseEvent& event, const Position& at) override;
    void Enter() override;
    void Leave() override;

  private:
    Click Place(const Position& at) override;
    void BeginAt(const Position& at);
    void Stretch(const Position& start, const Point& pointer);

    std::optional<Position> start_;  ///< the first end, once it is placed
};

}  // namespace keelview
