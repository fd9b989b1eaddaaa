#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace keelview {

/// A date and time of day on a clock without zone: seconds since 1970/01/01 00:00:00 of that clock.
using CivilTime = std::int64_t;

/// Seconds of the given date (proleptic Gregorian); nothing if there is no such day or time of day.
std::optional<CivilTime> MakeCivilTime(int year, int month, int day, int hour, int minute, int second);

/// Reads a date with or without a time of day. Blanks around it are ignored; nothing for any other text.
/// - Year first, with slashes, dashes or dots: "2004/8/5 12:30:00", "2004-08-05 12:30", "2004.8.5".
/// - A date that ends in a four-digit year is read month first ("8/5/2004"), or day first where the first
///   part is above 12; with dots always day first ("05.08.2004").
/// - A year of two digits (00 to 79: 2000 to 2079) only where one order alone gives a day, or all give the
///   same: "25/12/99", "8/25/04", "99/8/5", "04/04/04", but not "5/8/04". The orders are year, month, day;
///   month, day, year (not with dots); day, month, year.
/// - "2004年8月5日", with a year of four digits, as two can count from an emperor.
/// The time behind a blank has two or three parts, with AM or PM behind it (in either case) or 午前 or 午後
/// before it; "12時30分15秒", or the head of it, is one too. Behind 日 it needs no blank. ISO 8601 joins
/// date and time by T: "2004-08-05T12:30:00". A Z behind it is passed over, as the clock has no zone; an
/// offset is not, as it would mean another moment.
std::optional<CivilTime> ParseDateTime(std::string_view text);

/// All moments that a text of numbers can mean, each once, month first before day first: "03/10/2026" has
/// two, the 10th of March and the 3rd of October; "2026/3/10" has one, and what is no date none.
std::vector<CivilTime> DateReadings(std::string_view text);

/// "2004/08/05 12:30:00".
std::string DateTimeText(CivilTime time);

/// The date part alone, "2004/08/05".
std::string DateText(CivilTime time);

/// The time of day alone, "12:30:00".
std::string TimeOfDayText(CivilTime time);

/// The number of minute boundaries crossed on the way from one moment to another; negative backward. Two
/// moments in the same clock minute are 0 apart, whatever their seconds.
std::int64_t MinuteBoundaries(CivilTime from, CivilTime to);

/// A duration as hours, minutes and seconds, two digits each: 245 is "00:04:05". The sign is dropped.
std::string DurationText(std::int64_t seconds);

/// Minutes, ":" and two digits of seconds from 60 on, the bare seconds below: "59", "2:05".
std::string ShortDurationText(std::int64_t seconds);

}  // namespace keelview
