// SPDX-License-Identifier: MIT
#ifndef SHAPE_NAMES_P_H
#define SHAPE_NAMES_P_H

#include <optional>
#include <string>
#include <string_view>

/// Number of the shape of that name, case ignored, in the bytes of a shape file, compiled or source; none where there
/// is no such shape or the bytes are no shape file.
std::optional<int> zvdbShapeNumber(std::string_view bytes, std::string_view name);
/// The same of a file \a fileName of a folder; where there is none, of its source, which ends in ".shp"; without both,
/// of the usual shapes.
std::optional<int> zvdbShapeNumber(const std::string &folder, const std::string &fileName, std::string_view name);

#endif
