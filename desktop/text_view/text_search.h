#pragma once

#include "desktop/text_view/text_lines.h"

#include <QRegularExpression>

#include <optional>

/// Looking for a text in a text of any length, a stretch at a time. Offsets count from 0.
namespace tarvik {

/// Offsets of characters: from the first, to the one behind the last.
struct TextRange {
    std::size_t start = 0, end = 0;
    friend bool operator==(const TextRange&, const TextRange&) = default;
};

/// What is looked for, and how many of its places in one text have been counted. Upper and lower case are the same; no
/// place is empty.
class Sought {
public:
    Sought() = default;
    /// `whole_words`: no letter or digit stands beside a place. `is_pattern`: the text is a regular expression.
    Sought(const QString& text, bool whole_words, bool is_pattern);

    /// Nothing is looked for, or the regular expression is none.
    bool is_empty() const { return pattern_.pattern().isEmpty(); }
    QString error() const { return error_; }
    /// The places that begin in [from, to).
    std::vector<TextRange> places(const TextLines& lines, std::size_t from, std::size_t to) const;
    /// The first place that begins at or behind an offset, or the last one before it; around the end of the text.
    std::optional<TextRange> next(const TextLines& lines, std::size_t from, bool forward) const;

    /// Counts on, a stretch at each call, and gives whether there is more to count.
    bool count_on(const TextLines& lines);
    std::size_t count() const { return starts_.size(); }
    /// The number of the counted place that begins at an offset, from 1.
    std::size_t number(std::size_t start) const;
    /// The text is another.
    void count_anew()
    {
        counted_to_ = 0;
        starts_.clear();
    }

private:
    QRegularExpression pattern_;
    QString error_;
    std::size_t counted_to_ = 0;      // this offset
    std::vector<std::size_t> starts_; // of the counted places
};

} // namespace tarvik
