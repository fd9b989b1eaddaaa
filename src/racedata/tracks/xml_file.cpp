#include "racedata/tracks/xml_file.h"

#include <algorithm>
#include <string>

namespace keelview {

namespace {

constexpr std::string_view White = " \t\r\n";

std::string_view WithoutPrefix(std::string_view name) {
    return name.substr(name.find(':') + 1);  // the whole name where find gives npos
}

/// Cuts the head off the text, up to the end of what is searched for; all of it where that is missing.
void CutPast(std::string_view& text, std::string_view what) {
    const std::size_t at = text.find(what);
    text.remove_prefix(at == std::string_view::npos ? text.size() : at + what.size());
}

/// The name of the first tag, behind declarations and comments; empty where the text is no XML.
std::string_view FirstTag(std::string_view text) {
    if (text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3);
    if (text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF")) text.remove_prefix(2);
    text.remove_prefix(std::min(text.find_first_not_of(White), text.size()));
    if (!text.starts_with('<')) return {};
    while (text.starts_with("<?") || text.starts_with("<!")) {
        CutPast(text, text.starts_with("<!--") ? "-->" : ">");
        text.remove_prefix(std::min(text.find('<'), text.size()));
    }
    if (text.empty()) return {};
    text.remove_prefix(1);
    return WithoutPrefix(text.substr(0, text.find_first_of(" \t\r\n/>")));
}

/// How often a sign stands in a text. Counted by stretches whose count fits a byte, so that the compiler
/// compares many signs at a time.
std::size_t CountOf(char sign, std::string_view text) {
    constexpr std::size_t stretch = 255;
    std::size_t count = 0;
    for (; !text.empty(); text.remove_prefix(std::min(stretch, text.size()))) {
        unsigned char some = 0;
        for (const char c : text.substr(0, stretch)) some = static_cast<unsigned char>(some + (c == sign));
        count += some;
    }
    return count;
}

/// Whether the tree of a file would be out of proportion to its size. A fix of a real file takes 4 to 6
/// times its text.
bool TakesTooMuch(std::string_view bytes) {
    constexpr std::size_t elementSize = 64, attributeSize = 40, mostTimes = 12, always = 1 << 20;
    const std::size_t most = bytes.size() * mostTimes + always;
    return CountOf('<', bytes) * elementSize + CountOf('=', bytes) * attributeSize > most;
}

std::size_t CountOf(std::string_view what, std::string_view text) {
    std::size_t count = 0;
    for (std::size_t at = text.find(what); at != std::string_view::npos;
         at = text.find(what, at + what.size()))
        ++count;
    return count;
}

/// The file up to the end of its last tag. In a file that was cut off, a number behind it may have lost
/// digits.
std::string_view UpToLastTag(std::string_view bytes) {
    std::size_t end = bytes.rfind('>') + 1;                  // 0 without one
    while (end < bytes.size() && bytes[end] == '\0') ++end;  // the second half of the sign in UTF-16
    return bytes.substr(0, end);
}

/// The element that follows in the order of the file, and how much deeper it lies; null at the end.
pugi::xml_node NextElement(pugi::xml_node node, bool inside, int& depth) {
    const auto elementAt = [](pugi::xml_node at) {
        while (at && at.type() != pugi::node_element) at = at.next_sibling();
        return at;
    };
    if (const pugi::xml_node child = inside ? elementAt(node.first_child()) : pugi::xml_node()) {
        ++depth;
        return child;
    }
    for (; node && depth > 0; node = node.parent(), --depth)
        if (const pugi::xml_node next = elementAt(node.next_sibling())) return next;
    return {};
}

/// Reads the elements of a document. False, and stopped, where they lie too deep.
bool ReadElements(const pugi::xml_document& document, ReadXmlElement read, WrittenFixes& fixes) {
    constexpr int deepest = 200;
    int depth = 1;
    for (pugi::xml_node element = document.document_element(); element;) {
        if (depth > deepest) return false;
        const bool inside = read(element, fixes);
        element = NextElement(element, inside, depth);
    }
    return true;
}

}  // namespace

bool IsXmlOf(std::string_view bytes, std::string_view root) {
    constexpr std::size_t headSize = 16'384;
    std::string head(bytes.substr(0, headSize));
    std::erase(head, '\0');  // names of tags are ASCII in UTF-16 as well
    return FirstTag(head) == root;
}

TrackFileContent ReadXmlTracks(std::string_view bytes, std::string_view timeEnd, ReadXmlElement read) {
    if (TakesTooMuch(bytes)) return {{}, Refusal::TooLarge, {}, {}, {}};
    const std::string_view sound = UpToLastTag(bytes);
    constexpr unsigned options = pugi::parse_cdata | pugi::parse_escapes | pugi::parse_embed_pcdata;
    pugi::xml_document document;
    const bool whole = document.load_buffer(sound.data(), sound.size(), options);
    if (!document.document_element()) return {{}, Refusal::Broken, {}, {}, {}};
    WrittenFixes fixes;
    fixes.MakeRoom(CountOf(timeEnd, sound));
    if (!ReadElements(document, read, fixes)) return {{}, Refusal::TooLarge, {}, {}, {}};
    if (!whole) fixes.Leave(SkipReason::Broken);
    return fixes.Take();
}

std::string_view LocalName(pugi::xml_node element) {
    return WithoutPrefix(element.name());
}

pugi::xml_node XmlChild(pugi::xml_node element, std::string_view name) {
    for (const pugi::xml_node child : element.children())
        if (LocalName(child) == name) return child;
    return {};
}

std::string_view XmlText(pugi::xml_node element) {
    std::string_view text = element.child_value();
    text.remove_prefix(std::min(text.find_first_not_of(White), text.size()));
    return text.substr(0, text.find_last_not_of(White) + 1);
}

}  // namespace keelview
