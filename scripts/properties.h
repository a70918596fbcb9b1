#pragma once

#include "scripts/control_directory.h"
#include "scripts/values.h"

#include <functional>
#include <string_view>
#include <vector>

namespace tarvik {

/// Reads one property of a control; nothing when controls of its kind have no property of that name.
std::function<Value()> property_reader(const AnyControl& control, std::string_view property);
/// The names of the properties that a control of this kind has.
std::vector<std::string_view> property_names(const AnyControl& control);

} // namespace tarvik
