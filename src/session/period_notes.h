#pragma once

#include <string>

#include "analysis/period_trouble.h"

namespace keelview {

/// Tells the person both periods, and what would bring them together.
std::string PeriodNotes(const PeriodTrouble& trouble, bool useEnglish);

}  // namespace keelview
