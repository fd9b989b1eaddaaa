#pragma once

#include <string>

#include "support/race_tree.h"
#include "support/simulated_regatta.h"

namespace keelview {

/// Writes the recordings of a regatta below a tree, one a boat: `name` and the boat's number. Its second 0
/// is the start of the tree's races, and a boat's clock goes so many seconds ahead.
template <class Ahead>
void WriteRecordings(const SimulatedRegatta& regatta, const TempTree& tree, const std::string& name,
                     Ahead ahead) {
    for (int boat = 1; boat <= regatta.Boats.Boats.Count(); ++boat) {
        const Track& track = regatta.Boats.Boats[boat];
        std::string fixes;
        for (int fix = 1; fix <= track.Count(); ++fix)
            fixes += RaceTree::TrackLine(
                track.At(fix), RaceTree::Start + static_cast<int>(track.TrackTime[fix]) + ahead(boat));
        tree.Write(name + std::to_string(boat) + ".trk", fixes);
    }
}
inline void WriteRecordings(const SimulatedRegatta& regatta, const TempTree& tree,
                            const std::string& name) {
    WriteRecordings(regatta, tree, name, [](int) { return 0; });
}

}  // namespace keelview
