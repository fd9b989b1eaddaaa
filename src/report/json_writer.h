#pragma once

#include <string>
#include <string_view>

namespace keelview {

/// Puts a JSON text (RFC 8259) together piece by piece: commas set themselves, names are escaped, numbers
/// have the shortest form that reads back as the same double, whole ones all their digits. Calls must nest
/// as the text does.
class JsonWriter {
  public:
    void BeginObject() { Open('{'); }
    void EndObject() { Close('}'); }
    void BeginArray() { Open('['); }
    void EndArray() { Close(']'); }

    /// The name of the next value of an object.
    void Key(std::string_view name);

    /// A text in UTF-8; bytes that are no UTF-8 come out as U+FFFD.
    void String(std::string_view text);

    /// null for a value that is not finite.
    void Number(double value);
    void Null();
    void Bool(bool value);

    /// A whole member of an object: its name and its value.
    void Member(std::string_view name, std::string_view text) {
        Key(name);
        String(text);
    }
    void Member(std::string_view name, double value) {
        Key(name);
        Number(value);
    }

    const std::string& Text() const { return text_; }

  private:
    void Open(char bracket);
    void Close(char bracket);
    void Separate();
    void Quote(std::string_view text);

    std::string text_;
    bool needsComma_ = false;
};

}  // namespace keelview
