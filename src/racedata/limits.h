#pragma once

namespace keelview {

// Most elements that a race may have. Race arrays are used from index 1; index 0 exists and stays empty.
inline constexpr int MaxBoats = 50;
inline constexpr int MaxMarks = 30;
inline constexpr int MaxLines = 10;
inline constexpr int MaxCourseEntries = 50;
inline constexpr int MaxClickedEntries = 30;  // of them, by mouse: as many as the panel has room for
inline constexpr int MaxCells = 20;
inline constexpr int MaxAttachments = 50;

}  // namespace keelview
