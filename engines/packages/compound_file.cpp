#include "engines/packages/compound_file.h"

#include <algorithm>

namespace tarvik {

namespace {

constexpr std::string_view signature = "\xd0\xcf\x11\xe0\xa1\xb1\x1a\xe1";
constexpr std::size_t header_size = 512, entry_size = 128, table_places_in_header = 109;
constexpr std::uint32_t last_regular_sector = 0xfffffffa, end_of_chain = 0xfffffffe, no_entry = 0xffffffff;
constexpr std::uint64_t shortest_stream_in_sectors = 4096;

/// The bytes are damaged.
struct Damaged {};

std::uint32_t number_at(std::string_view bytes, std::size_t at, std::size_t size)
{
    if (at > bytes.size() || size > bytes.size() - at) throw Damaged();
    std::uint32_t number = 0;
    for (std::size_t i = size; i-- > 0;) number = number << 8U | static_cast<unsigned char>(bytes[at + i]);
    return number;
}

class CompoundFile {
public:
    explicit CompoundFile(std::string_view bytes) : bytes_(bytes), shift_(number_at(bytes, 30, 2))
    {
        if (shift_ != 9 && shift_ != 12) throw Damaged();
        read_table();
        read_directory();
    }

    void check_streams() const
    {
        for (std::uint32_t entry = 0; entry < directory_.size() / entry_size; ++entry) {
            const auto kind = type(entry);
            if (kind == stream || kind == root) check_stream(entry, kind == root);
        }
    }

    std::vector<CompoundEntry> entries_of_root() const
    {
        std::vector<CompoundEntry> entries;
        std::vector<bool> seen(directory_.size() / entry_size);
        std::vector<std::uint32_t> waiting{directory_number(0, 76)};
        while (!waiting.empty()) {
            const auto entry = waiting.back();
            waiting.pop_back();
            if (entry == no_entry) continue;
            if (entry >= seen.size() || seen[entry]) throw Damaged();
            seen[entry] = true;
            entries.push_back({name(entry), type(entry) == stream, beginning(entry)});
            waiting.push_back(directory_number(entry, 68));
            waiting.push_back(directory_number(entry, 72));
        }
        return entries;
    }

private:
    static constexpr std::uint32_t stream = 2, root = 5;

    std::size_t sector_size() const { return std::size_t{1} << shift_; }

    std::string_view sector(std::uint32_t number) const
    {
        const auto start = (std::size_t{number} + 1) << shift_;
        if (number > last_regular_sector || start >= bytes_.size()) throw Damaged();
        return bytes_.substr(start, sector_size());
    }

    std::uint32_t next(std::uint32_t number) const
    {
        if (number >= table_.size()) throw Damaged();
        return table_[number];
    }

    // The table of sectors lies in sectors that the header names, and where they do not suffice a chain of lists.
    void read_table()
    {
        add_to_table(bytes_.substr(76, table_places_in_header * 4));
        const std::size_t most_lists = bytes_.size() >> shift_;
        std::uint32_t list = number_at(bytes_, 68, 4);
        for (std::size_t read = 0; list <= last_regular_sector; ++read) {
            if (read > most_lists) throw Damaged();
            const auto numbers = sector(list);
            add_to_table(numbers.substr(0, sector_size() - 4));
            list = number_at(numbers, sector_size() - 4, 4);
        }
    }

    void add_to_table(std::string_view places)
    {
        for (std::size_t at = 0; at + 4 <= places.size(); at += 4) {
            const auto place = number_at(places, at, 4);
            if (place > last_regular_sector) continue;
            const auto numbers = sector(place);
            for (std::size_t i = 0; i < sector_size(); i += 4) table_.push_back(number_at(numbers, i, 4));
        }
    }

    void read_directory()
    {
        for (auto at = number_at(bytes_, 48, 4); at != end_of_chain; at = next(at)) {
            if (directory_.size() > bytes_.size()) throw Damaged();
            directory_ += sector(at);
        }
        if (directory_.size() < entry_size) throw Damaged();
    }

    std::uint32_t directory_number(std::uint32_t entry, std::size_t at, std::size_t size = 4) const
    {
        return number_at(directory_, entry * entry_size + at, size);
    }
    std::uint32_t type(std::uint32_t entry) const { return directory_number(entry, 66, 1); }
    std::uint64_t size(std::uint32_t entry) const
    {
        const std::uint64_t high = shift_ == 12 ? directory_number(entry, 124) : 0;
        return high << 32U | directory_number(entry, 120);
    }

    std::string name(std::uint32_t entry) const
    {
        std::string made;
        const std::size_t length = std::min(directory_number(entry, 64, 2), 64U) / 2;
        for (std::size_t i = 0; i + 1 < length; ++i) {
            const auto unit = directory_number(entry, 2 * i, 2);
            made += unit < 128 ? static_cast<char>(unit) : '?';
        }
        return made;
    }

    std::string_view beginning(std::uint32_t entry) const
    {
        if (type(entry) != stream || size(entry) < shortest_stream_in_sectors) return {};
        return sector(directory_number(entry, 116));
    }

    void check_stream(std::uint32_t entry, bool is_root) const
    {
        auto left = size(entry);
        if (left > bytes_.size()) throw Damaged();
        if (!is_root && left < shortest_stream_in_sectors) return; // it lies in the root's own stream
        for (auto at = directory_number(entry, 116); left > 0; at = next(at)) {
            const auto needed = std::min<std::uint64_t>(left, sector_size());
            if (sector(at).size() < needed) throw Damaged();
            left -= needed;
        }
    }

    std::string_view bytes_;
    std::uint32_t shift_;
    std::vector<std::uint32_t> table_;
    std::string directory_;
};

} // namespace

bool is_compound_file(std::string_view beginning) noexcept
{
    return beginning.starts_with(signature);
}

std::optional<std::vector<CompoundEntry>> read_compound_file(std::string_view bytes)
{
    try {
        if (!is_compound_file(bytes) || bytes.size() < header_size) return std::nullopt;
        const CompoundFile file(bytes);
        file.check_streams();
        return file.entries_of_root();
    } catch (const Damaged&) {
        return std::nullopt;
    }
}

} // namespace tarvik
