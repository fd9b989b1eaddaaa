#include "racedata/tracks/xml_file.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "base/strings.h"

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

/// Reads the elements of a document but for the first ones, of which each holds the next. False, and
/// stopped, where they lie too deep.
bool ReadElements(const pugi::xml_document& document, std::size_t first, ReadXmlElement read,
                  WrittenFixes& fixes) {
    constexpr int deepest = 200;
    int depth = 1;
    for (pugi::xml_node element = document.document_element(); element;) {
        if (depth > deepest) return false;
        const bool inside = first > 0 || read(element, fixes);
        if (first > 0) --first;
        element = NextElement(element, inside, depth);
    }
    return true;
}

constexpr unsigned Options = pugi::parse_cdata | pugi::parse_escapes | pugi::parse_embed_pcdata;

/// Whether a file is UTF-8 and says nothing else.
bool IsUtf8(std::string_view text) {
    constexpr std::size_t headSize = 256;
    std::string_view head = text.substr(0, headSize);
    if (head.find('\0') != std::string_view::npos || head.starts_with("\xFF\xFE")) return false;
    if (head.starts_with("\xFE\xFF")) return false;
    head = head.substr(0, head.find("?>"));
    const std::size_t at = head.find("encoding");
    if (at == std::string_view::npos) return true;
    const std::string_view told = head.substr(at, 15);  // encoding="UTF-8
    return told.size() == 15 && EqualNoCase(told.substr(10), "utf-8");
}

/// An XML file in pieces that each end with a point, so that its tree never stands in memory as a whole.
/// Each piece is parsed inside the elements that were open where it begins.
class XmlPieces {
  public:
    /// `pointEnd` is the tag that ends a point.
    XmlPieces(std::string_view text, std::string_view pointEnd) : left_(text), pointEnd_(pointEnd) {}

    /// Reads all pieces. False where the whole could read otherwise: for a fault anywhere, for a cut in a
    /// comment, and where an element tells something of itself behind its first points.
    bool Read(ReadXmlElement read, WrittenFixes& fixes) {
        for (bool ends = false; !ends;) {
            ends = left_.find(pointEnd_, PieceSize) == std::string_view::npos;
            if (!ParsePiece(ends) || !AddsPointsAlone()) return false;
            if (!ReadElements(document_, open_.size(), read, fixes)) return false;
            if (!ends && !FindOpen()) return false;
        }
        return true;
    }

  private:
    static constexpr std::size_t PieceSize = std::size_t{1} << 16U;

    /// Parses what is left up to the end of a point; the whole of it if the file ends with this piece.
    bool ParsePiece(bool ends) {
        piece_.clear();
        for (const std::string& name : open_) piece_.append("<").append(name).append(">");
        const std::size_t size = ends ? left_.size() : left_.find(pointEnd_, PieceSize) + pointEnd_.size();
        piece_.append(left_.substr(0, size)).append("\n");
        left_.remove_prefix(size);
        const pugi::xml_parse_result result =
            document_.load_buffer_inplace(piece_.data(), piece_.size(), Options, pugi::encoding_utf8);
        if (ends) return result.status == pugi::status_ok;
        // Nothing is wrong but that elements are still open at the end.
        return result.status == pugi::status_end_element_mismatch &&
               static_cast<std::size_t>(result.offset) + 2 >= piece_.size();
    }

    /// Whether an element that was open already has nothing new but points, and elements as lay open
    /// before.
    bool AddsPointsAlone() const {
        pugi::xml_node element = document_.document_element();
        for (std::size_t depth = 0; depth < open_.size(); ++depth, element = element.first_child())
            for (const pugi::xml_node child : element.children())
                if (child.type() == pugi::node_element && !IsPoint(child) &&
                    std::ranges::find(open_, child.name()) == open_.end())
                    return false;
        return true;
    }

    /// Notes the elements around the last point; false where the piece ends with none, or with a point in
    /// another one.
    bool FindOpen() {
        open_.clear();
        pugi::xml_node element = document_.last_child();
        for (; element && !IsPoint(element); element = element.last_child())
            open_.emplace_back(element.name());
        pugi::xml_node inside = element.last_child();
        while (inside && !IsPoint(inside)) inside = inside.last_child();
        return element && !inside;
    }

    /// The name of a point's tag stands between "</" and ">".
    bool IsPoint(pugi::xml_node element) const {
        return element.name() == pointEnd_.substr(2, pointEnd_.size() - 3);
    }

    std::string_view left_;
    std::string_view pointEnd_;
    std::string piece_;
    std::vector<std::string> open_;  // names of the elements round the place where left_ begins
    pugi::xml_document document_;
};

/// Reads the elements of a file whose tree is in memory as a whole.
TrackFileContent ReadWholeXml(std::string_view bytes, WrittenFixes fixes, ReadXmlElement read) {
    pugi::xml_document document;
    const bool whole = document.load_buffer(bytes.data(), bytes.size(), Options);
    if (!document.document_element()) return {{}, Refusal::Broken, {}, {}, {}};
    if (!ReadElements(document, 0, read, fixes)) return {{}, Refusal::TooLarge, {}, {}, {}};
    if (!whole) fixes.Leave(SkipReason::Broken);
    return fixes.Take();
}

}  // namespace

bool IsXmlOf(std::string_view bytes, std::string_view root) {
    constexpr std::size_t headSize = 16'384;
    std::string head(bytes.substr(0, headSize));
    std::erase(head, '\0');  // names of tags are ASCII in UTF-16 as well
    return FirstTag(head) == root;
}

TrackFileContent ReadXmlTracks(std::string_view bytes, const XmlTags& tags, ReadXmlElement read) {
    if (TakesTooMuch(bytes)) return {{}, Refusal::TooLarge, {}, {}, {}};
    const std::string_view sound = UpToLastTag(bytes);
    WrittenFixes empty;
    empty.MakeRoom(CountOf(tags.TimeEnd, sound));
    if (!tags.PointEnd.empty() && IsUtf8(sound)) {
        WrittenFixes fixes = empty;
        if (XmlPieces(sound, tags.PointEnd).Read(read, fixes)) return fixes.Take();
    }
    return ReadWholeXml(sound, std::move(empty), read);
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
