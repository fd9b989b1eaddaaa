#pragma once

#include "base/position.h"
#include "display/control.h"

namespace keelview {

/// What a click on the map was to the tool in hand.
enum class Click {
    Passed,   ///< nothing: it moves or zooms the view
    Taken,    ///< it did its work
    Picked,   ///< it was about a mark or line that lies there, or missed one: the boats stand still among
              ///< them
    Finished  ///< it did its work, and the tool is done
};

/// What the mouse on the map is used for. There is one tool in hand at a time.
struct MapTool {
    MapTool() = default;
    MapTool(const MapTool&) = delete;
    MapTool& operator=(const MapTool&) = delete;
    virtual ~MapTool() = default;

    /// A button is pressed over a position.
    virtual Click Press(const MouseEvent& event, const Position& at) = 0;
    /// The pointer moves over a position: hints, and what hangs on the pointer.
    virtual void Follow(const MouseEvent& event, const Position& at) = 0;
    /// The tool is taken in hand.
    virtual void Enter() {}
    /// The tool is put away; what was begun with it is given up.
    virtual void Leave() {}
};

}  // namespace keelview
