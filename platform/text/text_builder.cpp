#include "platform/text/text_builder.h"

#include <algorithm>
#include <utility>

namespace tarvik {

namespace {

template <typename Target>
void append_to(Target& target, TextView piece)
{
    using Char = typename Target::value_type;
    piece.visit([&target](auto characters) {
        const std::size_t size = target.size();
        target.resize(size + characters.size());
        std::ranges::transform(characters, target.begin() + static_cast<std::ptrdiff_t>(size),
                               [](auto character) { return static_cast<Char>(character); });
    });
}

} // namespace

void TextBuilder::append(TextView piece)
{
    const unsigned needed = piece.width() > width_ ? needed_width(piece) : 1;
    if (needed == 2 && width_ == 1) {
        basic_.assign(narrow_.begin(), narrow_.end());
        std::exchange(narrow_, {});
        width_ = 2;
    }
    if (needed == 4 && width_ < 4) {
        wide_.reserve(narrow_.size() + basic_.size() + piece.size());
        wide_.append(narrow_.begin(), narrow_.end()).append(basic_.begin(), basic_.end());
        std::exchange(narrow_, {});
        std::exchange(basic_, {});
        width_ = 4;
    }
    switch (width_) {
    case 1: append_to(narrow_, piece); break;
    case 2: append_to(basic_, piece); break;
    default: append_to(wide_, piece); break;
    }
}

SharedBuffer TextBuilder::finish()
{
    switch (std::exchange(width_, 1)) {
    case 1: return std::make_shared<const TextBuffer>(std::exchange(narrow_, {}));
    case 2: return std::make_shared<const TextBuffer>(std::exchange(basic_, {}));
    default: return std::make_shared<const TextBuffer>(std::exchange(wide_, {}));
    }
}

} // namespace tarvik
