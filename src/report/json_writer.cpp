#include "report/json_writer.h"

#include <cmath>

#include "base/digits.h"
#include "base/text_encoding.h"

namespace keelview {

namespace {

/// Whole numbers below it are written with all their digits: 900000, not 9e+05.
constexpr double MostPlainWhole = 1e15;

}  // namespace

void JsonWriter::Key(std::string_view name) {
    Separate();
    Quote(name);
    text_ += ':';
    needsComma_ = false;
}

void JsonWriter::String(std::string_view text) {
    Separate();
    Quote(text);
}

void JsonWriter::Number(double value) {
    if (!std::isfinite(value)) {
        Null();
        return;
    }
    Separate();
    const bool whole = value == std::trunc(value) && std::abs(value) < MostPlainWhole;
    text_ += whole ? FixedDigits(value, 0) : ShortestDigits(value);
}

void JsonWriter::Null() {
    Separate();
    text_ += "null";
}

void JsonWriter::Bool(bool value) {
    Separate();
    text_ += value ? "true" : "false";
}

void JsonWriter::Open(char bracket) {
    Separate();
    text_ += bracket;
    needsComma_ = false;
}

void JsonWriter::Close(char bracket) {
    text_ += bracket;
    needsComma_ = true;
}

void JsonWriter::Separate() {
    if (needsComma_) text_ += ',';
    needsComma_ = true;
}

void JsonWriter::Quote(std::string_view text) {
    constexpr std::string_view hex = "0123456789abcdef";
    const bool sound = IsValidUtf8(text);
    text_ += '"';
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\') {
            text_ += '\\';
            text_ += c;
        } else if (byte < 0x20) {
            text_ += "\\u00";
            text_ += hex[byte >> 4];
            text_ += hex[byte & 15];
        } else if (byte >= 0x80 && !sound) {
            text_ += "\\ufffd";
        } else {
            text_ += c;
        }
    }
    text_ += '"';
}

}  // namespace keelview
