#pragma once

#include <cassert>
#include <cstddef>
#include <initializer_list>
#include <iterator>
#include <limits>
#include <utility>
#include <vector>

namespace keelview {

/// A list whose elements count from 1, as people count marks, boats and fixes. It holds at most `Limit` of
/// them. An index outside 1 to Count() is a fault of the program.
template <class T, int Limit = std::numeric_limits<int>::max()>
class OneBased {
  public:
    OneBased() = default;
    /// So many elements of one value.
    explicit OneBased(int count, const T& value = T()) : values_(Size(count), value) {}
    OneBased(std::initializer_list<T> values) : values_(values) {}
    template <std::input_iterator Iterator>
    OneBased(Iterator first, Iterator last) : values_(first, last) {}

    int Count() const { return static_cast<int>(values_.size()); }
    bool Empty() const { return values_.empty(); }
    bool IsFull() const { return Count() >= Limit; }
    /// True if there is an element of that number.
    bool Holds(int index) const { return index >= 1 && index <= Count(); }

    T& operator[](int index) {
        assert(Holds(index));
        return values_[Size(index - 1)];
    }
    const T& operator[](int index) const {
        assert(Holds(index));
        return values_[Size(index - 1)];
    }
    T& Last() { return values_.back(); }
    const T& Last() const { return values_.back(); }

    /// Adds an element behind the others; false, and nothing changed, where the list is full.
    bool Add(T value) {
        if (IsFull()) return false;
        values_.push_back(std::move(value));
        return true;
    }
    /// Puts an element before the one of that number, or behind all for Count() + 1.
    void Insert(int index, T value) { values_.insert(values_.begin() + (index - 1), std::move(value)); }
    /// Takes an element out; the later ones move up.
    void Erase(int index) {
        assert(Holds(index));
        values_.erase(values_.begin() + (index - 1));
    }
    void Clear() { values_.clear(); }
    void Reserve(int count) { values_.reserve(Size(count)); }
    /// Has so many elements from now on; new ones have the value.
    void Resize(int count, const T& value = T()) { values_.resize(Size(count), value); }
    /// So many elements of one value, whatever was there.
    void Assign(int count, const T& value) { values_.assign(Size(count), value); }

    auto begin() { return values_.begin(); }
    auto end() { return values_.end(); }
    auto begin() const { return values_.begin(); }
    auto end() const { return values_.end(); }
    T* Data() { return values_.data(); }  ///< element 1 and those behind it
    const T* Data() const { return values_.data(); }

    friend bool operator==(const OneBased&, const OneBased&) = default;

  private:
    static std::size_t Size(int count) { return static_cast<std::size_t>(count); }

    std::vector<T> values_;
};

}  // namespace keelview
