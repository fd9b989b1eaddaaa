#pragma once

#include <array>
#include <string_view>

namespace keelview {

/// One sentence of NMEA 0183, such as "$GPGLL,3517.25,N,13928.77,E,032300,A*2C".
struct NmeaSentence {
    static constexpr std::size_t MostFields = 20;  ///< further ones are not looked at

    std::string_view Kind;  ///< "GLL"; the talker before it is passed over
    std::array<std::string_view, MostFields> Fields;
    std::size_t Count = 0;

    /// A field counted from 1, as the tables of the standard do; empty where the sentence ends before it.
    std::string_view Field(std::size_t number) const {
        return number <= Count ? Fields[number - 1] : std::string_view{};
    }
    /// A field as a number; NoNumber if it is none.
    double Number(std::size_t number) const;
    bool Says(std::size_t number, char letter) const { return Field(number).starts_with(letter); }
};

/// What stands in a line of a log.
enum class NmeaLine { Sentence, Nothing, Broken };

/// Reads the first whole sentence of a line, whatever stands before it: a time stamp, a tag block, or the
/// rest of a sentence that was cut off. Broken where there is none, but one that does not agree with its
/// checksum.
NmeaLine ReadNmeaLine(std::string_view line, NmeaSentence& sentence);

}  // namespace keelview
