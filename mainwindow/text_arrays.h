#pragma once

#include "platform/failure.h"
#include "platform/text/document.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <functional>
#include <memory>
#include <unordered_set>
#include <vector>

/// The fixed arrays of the program: bounds of their own, but no memory before an element is used.
namespace tarvik {

/// Elements 0 to `last`; an element that was never written reads as a default Value. Storage comes in chunks.
template <typename Value>
class SparseArray {
public:
    explicit SparseArray(std::size_t last) : last_(last) {}

    std::size_t last() const { return last_; }
    Value get(std::size_t index) const
    {
        const std::size_t chunk = index / chunk_size;
        return chunk < chunks_.size() && chunks_[chunk] ? (*chunks_[chunk])[index % chunk_size] : Value{};
    }
    /// Throws Failure beyond the bound.
    void set(std::size_t index, Value value)
    {
        if (index > last_) throw Failure(U"数据超出软件所设定的数组范围。");
        const std::size_t chunk = index / chunk_size;
        if (chunk >= chunks_.size()) chunks_.resize(chunk + 1);
        if (!chunks_[chunk]) chunks_[chunk] = std::make_unique<Chunk>();
        (*chunks_[chunk])[index % chunk_size] = std::move(value);
    }
    /// Back to the default from `first` to `last`, both included; whole chunks are given back.
    void clear(std::size_t first, std::size_t last)
    {
        while (first <= last && first / chunk_size < chunks_.size()) {
            const std::size_t chunk = first / chunk_size;
            const std::size_t chunk_last = chunk * chunk_size + chunk_size - 1;
            if (first % chunk_size == 0 && chunk_last <= last) chunks_[chunk].reset();
            else if (chunks_[chunk])
                for (std::size_t i = first; i <= std::min(last, chunk_last); ++i)
                    (*chunks_[chunk])[i % chunk_size] = {};
            first = chunk_last + 1;
        }
    }
    /// Calls `work` for every element that has storage.
    template <typename Work>
    void for_each_used(Work&& work) const
    {
        for (const auto& chunk : chunks_)
            if (chunk)
                for (const Value& value : *chunk) work(value);
    }

private:
    static constexpr std::size_t chunk_size = 1024;
    using Chunk = std::array<Value, chunk_size>;
    std::size_t last_;
    std::vector<std::unique_ptr<Chunk>> chunks_;
};

/// Keeps the buffers alive that an array's views look into, and lets go of those that no view needs any more.
class BufferKeeper {
public:
    void keep(const SharedBuffer& buffer);
    /// True when so many buffers or bytes are kept that a sweep pays.
    bool wants_sweep() const { return buffers_.size() >= sweep_at_ || bytes_ > sweep_at_bytes_; }
    /// `for_each_view` calls its argument for every view in use.
    void sweep(const std::function<void(const std::function<void(TextView)>&)>& for_each_view);
    /// Whether a view lies in a buffer that is kept, or is empty. For assertions.
    bool holds(TextView view) const;
    std::vector<SharedBuffer> buffers() const { return {buffers_.begin(), buffers_.end()}; }

private:
    std::unordered_set<SharedBuffer> buffers_;
    const TextBuffer* latest_ = nullptr;
    std::size_t bytes_ = 0;
    std::size_t sweep_at_ = 64, sweep_at_bytes_ = 64 << 20;
};

/// An array of texts, each a view of a shared buffer. An empty text means that the element holds nothing.
class TextArray {
public:
    explicit TextArray(std::size_t last) : views_(last) {}

    std::size_t last() const { return views_.last(); }
    TextView get(std::size_t index) const { return views_.get(index); }
    /// Stores a text of its own.
    void set(std::size_t index, TextView text);
    /// Stores a piece of `buffer` without a copy.
    void set(std::size_t index, TextView piece, const SharedBuffer& buffer);
    /// Stores a piece of a buffer that keep() was called with.
    void set_view(std::size_t index, TextView piece)
    {
        assert(keeper_.holds(piece));
        views_.set(index, piece);
    }
    /// Keeps all of them from before the first of their pieces is stored. Buffers that no element looks into go.
    void keep(const std::vector<SharedBuffer>& buffers);
    /// The buffers that the elements lie in: whoever keeps get() beyond the next change keeps them too.
    std::vector<SharedBuffer> buffers() const { return keeper_.buffers(); }
    void clear(std::size_t first, std::size_t last) { views_.clear(first, last); }
    void swap(std::size_t a, std::size_t b);

private:
    void sweep();
    SparseArray<TextView> views_;
    BufferKeeper keeper_;
};

} // namespace tarvik
