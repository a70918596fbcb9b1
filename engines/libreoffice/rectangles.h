#pragma once

#include "engines/libreoffice/bridge.h"

#include <vector>

namespace tarvik::libreoffice {

/// Rectangles that cover exactly the places, which are in ascending order: runs along a row, and equal runs of rows
/// that follow each other together.
std::vector<Area> rectangles(const std::vector<Place>& places);

} // namespace tarvik::libreoffice
