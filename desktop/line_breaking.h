#pragma once

namespace tarvik {

/// Whether a row may end between two characters: behind blanks and hyphens, and between Chinese characters, but not
/// before a closing nor behind an opening mark.
bool may_break_between(char32_t before, char32_t after);

} // namespace tarvik
