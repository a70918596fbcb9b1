#include "desktop/char_widths.h"

namespace tarvik {

double CharWidths::measured(char32_t character) const
{
    const std::size_t page = character / page_size;
    if (page >= pages_.size()) pages_.resize(page + 1);
    if (!pages_[page]) {
        pages_[page] = std::make_unique<Page>();
        pages_[page]->fill(-1);
    }
    const auto width = static_cast<float>(measure_(character));
    (*pages_[page])[character % page_size] = width;
    return static_cast<double>(width);
}

} // namespace tarvik
