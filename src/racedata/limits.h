#pragma once

namespace keelview {

// Most elements that a race may have.
inline constexpr int MaxBoats = 200;
inline constexpr int MaxMarks = 60;
inline constexpr int MaxLines = 20;
inline constexpr int MaxCourseEntries = 50;
inline constexpr int MaxClickedEntries = 30;  // of them, by mouse: as many as the panel has room for
inline constexpr int MaxCells = 20;
inline constexpr int MaxAttachments = 50;

// What is larger is no angle or length: it would spoil the sums that follow.
inline constexpr double LargestNumber = 1e6;  ///< degrees, metres, knots

/// Seconds that a race can last, some four months: no file may keep a search longer.
inline constexpr int LongestRace = 10'000'000;

}  // namespace keelview
