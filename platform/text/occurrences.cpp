#include "platform/text/occurrences.h"

#include <algorithm>

namespace tarvik {

std::vector<std::size_t> borders_of(TextView needle)
{
    std::vector<std::size_t> borders(needle.size(), 0);
    for (std::size_t i = 1, border = 0; i < needle.size(); ++i) {
        while (border > 0 && needle[border] != needle[i]) border = borders[border - 1];
        if (needle[border] == needle[i]) ++border;
        borders[i] = border;
    }
    return borders;
}

Occurrences::Occurrences(TextView text, TextView needle)
    : text_(text), needle_(needle.str()), borders_(borders_of(needle_))
{
}

std::size_t Occurrences::next()
{
    if (needle_.empty()) return npos;
    std::size_t place = matched_ > 0 ? follow_overlap() : npos;
    if (place == npos) {
        place = text_.find(needle_, read_);
        read_ = place == npos ? text_.size() : place + needle_.size();
    }
    matched_ = place == npos ? 0 : borders_.back();
    return place;
}

// An occurrence that overlaps the one before shares a border with it. As long as one may be under way the text is read
// character by character; the fast search would compare the shared part again and again.
std::size_t Occurrences::follow_overlap()
{
    return text_.visit([this](auto characters) {
        while (matched_ > 0 && read_ < characters.size()) {
            const auto character = static_cast<char32_t>(characters[read_]);
            while (matched_ > 0 && needle_[matched_] != character) matched_ = borders_[matched_ - 1];
            if (needle_[matched_] != character) break;
            ++read_;
            if (++matched_ == needle_.size()) return read_ - needle_.size();
        }
        return npos;
    });
}

std::size_t Occurrences::at_or_behind(std::size_t from)
{
    if (started_ && (current_ == npos || current_ >= from)) return current_;
    if (from >= read_) {
        read_ = std::min(from, text_.size());
        matched_ = 0;
    }
    started_ = true;
    do {
        current_ = next();
    } while (current_ != npos && current_ < from);
    return current_;
}

std::size_t LastOccurrence::within(std::size_t end)
{
    while (ahead_ != npos && ahead_ + walk_.length() <= end) {
        last_ = ahead_;
        ahead_ = walk_.next();
    }
    return last_;
}

} // namespace tarvik
