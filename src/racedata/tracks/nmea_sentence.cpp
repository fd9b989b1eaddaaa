#include "racedata/tracks/nmea_sentence.h"

#include <algorithm>

#include "base/strings.h"
#include "racedata/tracks/numbers.h"

namespace keelview {
namespace {

constexpr std::size_t LongestSentence = 256;  // the standard has 82, and devices that do not keep it

int HexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return c >= 'a' && c <= 'f' ? c - 'a' + 10 : -1;
}

unsigned Checksum(std::string_view body) {
    unsigned sum = 0;
    for (const char c : body) sum ^= static_cast<unsigned char>(c);
    return sum;
}

/// Takes the checksum off what stands behind `$`. False if it is a wrong one.
bool TakeChecksum(std::string_view& text) {
    const std::size_t star = text.rfind('*');
    if (star == std::string_view::npos) {
        while (!text.empty() && (text.back() == '\r' || text.back() == ' ')) text.remove_suffix(1);
        return true;
    }
    const std::string_view digits = text.substr(star + 1, 2);
    text = text.substr(0, star);
    if (digits.size() < 2) return false;
    const int high = HexDigit(digits[0]);
    const int low = HexDigit(digits[1]);
    return high >= 0 && low >= 0 && Checksum(text) == static_cast<unsigned>(high * 16 + low);
}

/// Splits "GPGLL,3517.25,N" into its kind and its fields. A kind is three capitals behind two of the
/// talker; makers' own sentences begin with P and have kinds of any length.
bool SplitSentence(std::string_view body, NmeaSentence& sentence) {
    constexpr std::size_t talkerAndKind = 5;
    constexpr auto isSign = [](char c) { return (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9'); };
    const std::string_view address = CutHead(body, ',');
    if (address.size() < 2 || !std::ranges::all_of(address, isSign)) return false;
    sentence.Kind = address.size() == talkerAndKind && address[0] != 'P' ? address.substr(2) : "";
    sentence.Count = 0;
    const char* begin = body.data();
    const char* const end = begin + body.size();
    for (const char* at = begin; sentence.Count < NmeaSentence::MostFields; ++at) {
        if (at != end && *at != ',') continue;
        sentence.Fields[sentence.Count++] = {begin, static_cast<std::size_t>(at - begin)};
        if (at == end) break;
        begin = at + 1;
    }
    return true;
}

}  // namespace

double NmeaSentence::Number(std::size_t number) const {
    return WholeNumber(Field(number));
}

NmeaLine ReadNmeaLine(std::string_view line, NmeaSentence& sentence) {
    NmeaLine outcome = NmeaLine::Nothing;
    for (std::size_t dollar = line.find('$'); dollar != std::string_view::npos; dollar = line.find('$')) {
        line.remove_prefix(dollar + 1);
        std::string_view body = line.substr(0, LongestSentence);
        if (TakeChecksum(body) && SplitSentence(body, sentence)) return NmeaLine::Sentence;
        outcome = NmeaLine::Broken;
    }
    return outcome;
}

}  // namespace keelview
