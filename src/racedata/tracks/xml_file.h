#pragma once

#include <pugixml.hpp>
#include <string_view>

#include "racedata/tracks/written_fixes.h"

namespace keelview {

/// Whether a file is XML whose outermost element has that name, with any prefix.
bool IsXmlOf(std::string_view bytes, std::string_view root);

/// Reads one element. True if the elements inside it are to follow.
using ReadXmlElement = bool (*)(pugi::xml_node element, WrittenFixes& fixes);

/// Reads an XML file of any Unicode encoding, element for element in the order of the file. Entities stay
/// as they are but for the standard ones. A file that was cut off, or is faulty somewhere, gives what
/// stands before that place, without the text or the tag that was cut, and counts as one piece that is
/// broken. Refused is a file without an element (Broken), and one whose elements lie deeper than 200, or
/// are so many for its size that they would take more than some times of it in memory (TooLarge). The tag
/// that usually ends a time ("</time>") tells how many fixes there is room to be made for.
TrackFileContent ReadXmlTracks(std::string_view bytes, std::string_view timeEnd, ReadXmlElement read);

/// The name of an element without its prefix.
std::string_view LocalName(pugi::xml_node element);

/// The first element of that name, with any prefix, right inside another; a null node without one.
pugi::xml_node XmlChild(pugi::xml_node element, std::string_view name);

/// The text right inside an element, without white space around it; empty for a null node.
std::string_view XmlText(pugi::xml_node element);

}  // namespace keelview
