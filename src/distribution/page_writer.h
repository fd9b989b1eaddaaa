#pragma once

#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

#include "page/page_maker.h"

namespace keelview {

/// What came of writing a page.
struct WrittenPage {
    std::error_code Error;             ///< why there is none
    std::filesystem::path At;          ///< the page, or the file that met with the error
    std::vector<std::string> Missing;  ///< files that a race names and that are not there, each once
};

/// Writes the page of an order to a file. The program of the page is taken from the folder of the data,
/// from that of the running program or from what an installation shares.
WrittenPage WritePage(const PageOrder& order, const std::filesystem::path& file);

/// Where a page of that file name is written: below the folder of the distributions.
std::filesystem::path PagePath(const std::filesystem::path& appPath, const std::string& name);

}  // namespace keelview
