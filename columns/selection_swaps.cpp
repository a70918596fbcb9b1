#include "columns/sort.h"

#include <bit>

namespace tarvik {

namespace {

/// Finds the first of the smallest keys among those that are left, in a tree of the winners of each pair.
class MinimaTree {
public:
    explicit MinimaTree(std::vector<double> keys)
        : keys_(std::move(keys)), leaves_(std::bit_ceil(keys_.size() + 1)), winners_(2 * leaves_, none)
    {
        for (std::size_t i = 0; i < keys_.size(); ++i) winners_[leaves_ + i] = static_cast<std::uint32_t>(i);
        for (std::size_t node = leaves_; node-- > 1;)
            winners_[node] = winner(winners_[2 * node], winners_[2 * node + 1]);
    }

    std::size_t first_smallest() const { return winners_[1]; }
    double key(std::size_t place) const { return keys_[place]; }
    void remove(std::size_t place)
    {
        winners_[leaves_ + place] = none;
        update(place);
    }
    void set_key(std::size_t place, double key)
    {
        keys_[place] = key;
        update(place);
    }

private:
    static constexpr std::uint32_t none = 0xffff'ffff;

    // `left` stands before `right`, so it wins where they are equal.
    std::uint32_t winner(std::uint32_t left, std::uint32_t right) const
    {
        if (left == none) return right;
        return right != none && keys_[left] > keys_[right] ? right : left;
    }
    void update(std::size_t place)
    {
        for (std::size_t node = (leaves_ + place) / 2; node >= 1; node /= 2)
            winners_[node] = winner(winners_[2 * node], winners_[2 * node + 1]);
    }

    std::vector<double> keys_;
    std::size_t leaves_;
    std::vector<std::uint32_t> winners_;
};

} // namespace

std::vector<Swap> selection_swaps(const std::vector<double>& keys)
{
    std::vector<std::size_t> places;
    std::vector<double> sorted;
    for (std::size_t i = 0; i < keys.size(); ++i) {
        if (keys[i] == 0) continue;
        places.push_back(i);
        sorted.push_back(keys[i]);
    }
    MinimaTree tree(std::move(sorted));
    std::vector<Swap> swaps;
    for (std::size_t a = 0; a < places.size(); ++a) {
        const std::size_t smallest = tree.first_smallest();
        if (smallest != a) {
            swaps.push_back({places[a], places[smallest]});
            tree.set_key(smallest, tree.key(a));
        }
        tree.remove(a);
    }
    return swaps;
}

} // namespace tarvik
