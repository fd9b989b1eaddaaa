#pragma once

#include <pugixml.hpp>
#include <string_view>

#include "racedata/tracks/written_fixes.h"

namespace keelview {

/// Whether a file is XML whose outermost element has that name, with any prefix.
bool IsXmlOf(std::string_view bytes, std::string_view root);

/// Reads one element. True if the elements inside it are to follow.
using ReadXmlElement = bool (*)(pugi::xml_node element, WrittenFixes& fixes);

/// Tags of a kind of XML file.
struct XmlTags {
    std::string_view TimeEnd;   ///< usually ends a time, "</time>": room is made for so many fixes
    std::string_view PointEnd;  ///< ends a point, "</trkpt>", in a kind whose elements tell all of
                                ///< themselves before their first point; empty in other kinds
};

/// Reads an XML file of any Unicode encoding, element for element in the order of the file. Entities stay
/// as they are but for the standard ones. A file that was cut off, or is faulty somewhere, gives what
/// stands before that place, without the text or the tag that was cut, and counts as one piece that is
/// broken. Refused is a file without an element (Broken), and one whose elements lie deeper than 200, or
/// are so many for its size that they would take more than some times of it in memory (TooLarge). Where the
/// tag that ends a point is told, sound files of UTF-8 are parsed in pieces, in little memory.
TrackFileContent ReadXmlTracks(std::string_view bytes, const XmlTags& tags, ReadXmlElement read);

/// The name of an element without its prefix.
std::string_view LocalName(pugi::xml_node element);

/// The first element of that name, with any prefix, right inside another; a null node without one.
pugi::xml_node XmlChild(pugi::xml_node element, std::string_view name);

/// The text right inside an element, without white space around it; empty for a null node.
std::string_view XmlText(pugi::xml_node element);

}  // namespace keelview
