#pragma once

#include "platform/text/text.h"

#include <string>
#include <string_view>

/// Texts of cells as a part holds them: XML, with _xHHHH_ for what XML cannot hold.
namespace tarvik::ooxml {

/// A cell holds this many UTF-16 units at most.
inline constexpr int longest_cell_text = 32'767;

/// The raw XML text. CR LF becomes LF, the line break of a cell; a control character becomes _xHHHH_, a text that looks
/// like that has its "_" written as _x005F_; a lone surrogate becomes U+FFFD. What goes beyond the longest text of a
/// cell is left out.
std::string encode_cell_text(TextView text);
/// The text that stands for `written`, which is UTF-8 with its XML entities resolved already.
Text decode_cell_text(std::string_view written);
/// Whether readers would trim the raw text unless it is marked with xml:space="preserve".
bool needs_preserving(std::string_view raw) noexcept;

} // namespace tarvik::ooxml
