#pragma once

#include "platform/text.h"

#include <map>
#include <string>
#include <vector>

/// The column engine as plain loops over plain arrays, quadratic where nothing forbids it: what the fast one must
/// equal.
namespace tarvik::test {

/// An array whose elements exist when they are asked for.
template <typename Value>
class Endless {
public:
    Value& operator()(std::size_t index)
    {
        if (index >= values_.size()) values_.resize(index + 1);
        return values_[index];
    }

private:
    std::vector<Value> values_;
};

using Row = Endless<Text>;

class PlainLoops {
public:
    bool comp = false, showdata = true, notcap = false;
    std::size_t sufcount = 0, sugcount = 0, curcount = 0, sufrows = 0, sugrows = 0, keycount = 0;
    double resultcount = 0, compcount = 0, daydiff = 0;
    Row rowhits, sufrow, sugrow, distinct, distinctn, keylist;
    Endless<Row> suf, sug;
    Text pane, box;                       ///< RichTextBox3 and Text1(2)
    std::map<std::string, Text> files;    ///< scratch files in characters
    std::size_t sufcol = 1, sugcol = 1;   ///< columns of a comparison
    std::size_t datefrom = 2, dateto = 3; ///< columns of the date check
    double days = 10;

    void query(const Text& document, const Text& text);
    void split();
    void sort(std::size_t column);
    void statistics(std::size_t column, bool with_keys);
    void begin_comparison();
    void cross();
    void parallel(bool equal);
    void reset();
    void check_dates();
    void query_field(const Text& text, std::size_t column, std::size_t from, std::size_t to);

private:
    void clear(const std::string& name) { files[name] = U"\r\r\n"; }
    void load(const std::string& name)
    {
        if (!files[name].empty()) pane = files[name];
    }
    void scan(const Text& document, const Text& needle);
    std::size_t hits_ = 0;
};

} // namespace tarvik::test
