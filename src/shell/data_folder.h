#pragma once

#include <filesystem>

namespace keelview {

/// The folder that the program keeps its data in. Where a race folder stands beside the program, it is the
/// program's folder, if a person may write there or it is a browse-only copy (on a disc, say). Else, where
/// data are shared, by an installation (../share/keelview from the program's folder) or by a program whose
/// folder nobody may write to, it is `userFolder`: at the first start that is laid out with the demo and
/// the base data, set to the language, and later starts add the coasts that a newer installation came with;
/// a link in it leads to the program, where the system lets persons make one, for whoever looks for the
/// program beside the data. A user's folder that cannot be laid out is left as it is, and the shared one is
/// shown in its stead. Without shared data it is the program's folder.
std::filesystem::path SettleDataFolder(const std::filesystem::path& program,
                                       const std::filesystem::path& userFolder, bool japanese);

}  // namespace keelview
