// DoubleEndedVector: a sequence that is cheap to grow at either end.
//
// - Two vectors back to back: the front one holds its elements in reverse. Adding at an end takes amortised
//   constant time, access by place constant time.
// - Takes no memory while it is empty, and moves without copying or throwing, which a deque does not promise.
// - Adding or removing elements invalidates iterators and references to all of them.
#pragma once

#include <algorithm>
#include <compare>
#include <cstddef>
#include <initializer_list>
#include <iterator>
#include <type_traits>
#include <utility>
#include <vector>

namespace vantor {

template <typename T>
class DoubleEndedVector {
    template <bool kConst>
    class Iterator {
        using List = std::conditional_t<kConst, const DoubleEndedVector, DoubleEndedVector>;

    public:
        using iterator_category = std::random_access_iterator_tag;
        using value_type = T;
        using difference_type = std::ptrdiff_t;
        using pointer = std::conditional_t<kConst, const T*, T*>;
        using reference = std::conditional_t<kConst, const T&, T&>;

        Iterator() = default;
        Iterator(List* list, difference_type place) : m_list(list), m_place(place) {}
        // Every iterator can be read through only.
        operator Iterator<true>() const { return {m_list, m_place}; }

        reference operator*() const { return (*m_list)[static_cast<std::size_t>(m_place)]; }
        pointer operator->() const { return &**this; }
        reference operator[](difference_type by) const { return *(*this + by); }
        Iterator& operator++() { return *this += 1; }
        Iterator& operator--() { return *this -= 1; }
        Iterator operator++(int) { return std::exchange(*this, *this + 1); }
        Iterator operator--(int) { return std::exchange(*this, *this - 1); }
        Iterator& operator+=(difference_type by) {
            m_place += by;
            return *this;
        }
        Iterator& operator-=(difference_type by) { return *this += -by; }
        friend Iterator operator+(Iterator it, difference_type by) { return it += by; }
        friend Iterator operator+(difference_type by, Iterator it) { return it += by; }
        friend Iterator operator-(Iterator it, difference_type by) { return it -= by; }
        friend difference_type operator-(const Iterator& a, const Iterator& b) {
            return a.m_place - b.m_place;
        }
        friend bool operator==(const Iterator& a, const Iterator& b) { return a.m_place == b.m_place; }
        friend auto operator<=>(const Iterator& a, const Iterator& b) { return a.m_place <=> b.m_place; }

    private:
        List* m_list = nullptr;
        difference_type m_place = 0;
    };

public:
    using value_type = T;
    using iterator = Iterator<false>;
    using const_iterator = Iterator<true>;

    DoubleEndedVector() = default;
    DoubleEndedVector(std::initializer_list<T> elements) : m_back(elements) {}
    explicit DoubleEndedVector(std::size_t count, const T& element = T()) : m_back(count, element) {}
    template <std::input_iterator Source>
    DoubleEndedVector(Source first, Source end) : m_back(first, end) {}

    [[nodiscard]] std::size_t size() const { return m_front.size() + m_back.size(); }
    [[nodiscard]] bool empty() const { return m_front.empty() && m_back.empty(); }

    // `place` is under size().
    [[nodiscard]] T& operator[](std::size_t place) { return at(*this, place); }
    [[nodiscard]] const T& operator[](std::size_t place) const { return at(*this, place); }
    [[nodiscard]] T& front() { return (*this)[0]; }
    [[nodiscard]] const T& front() const { return (*this)[0]; }
    [[nodiscard]] T& back() { return (*this)[size() - 1]; }
    [[nodiscard]] const T& back() const { return (*this)[size() - 1]; }

    [[nodiscard]] iterator begin() { return {this, 0}; }
    [[nodiscard]] iterator end() { return {this, static_cast<std::ptrdiff_t>(size())}; }
    [[nodiscard]] const_iterator begin() const { return {this, 0}; }
    [[nodiscard]] const_iterator end() const { return {this, static_cast<std::ptrdiff_t>(size())}; }

    void push_front(T element) { m_front.push_back(std::move(element)); }
    void push_back(T element) { m_back.push_back(std::move(element)); }
    T& emplace_back() { return m_back.emplace_back(); }
    // How many elements there is room for when more are added at the back only.
    [[nodiscard]] std::size_t capacity() const { return m_front.size() + m_back.capacity(); }
    void reserve(std::size_t count) { m_back.reserve(count - std::min(count, m_front.size())); }
    // Makes room for so many more at the front, which then are added without taking memory.
    void reserveFront(std::size_t count) { m_front.reserve(m_front.size() + count); }
    void clear() {
        m_front.clear();
        m_back.clear();
    }

    // Removes what `isRemoved` is true for, keeping the order of the rest; the result counts the removed.
    template <typename Predicate>
    std::size_t removeIf(Predicate isRemoved) {
        return std::erase_if(m_front, isRemoved) + std::erase_if(m_back, isRemoved);
    }

    friend bool operator==(const DoubleEndedVector& a, const DoubleEndedVector& b) {
        return std::equal(a.begin(), a.end(), b.begin(), b.end());
    }

private:
    template <typename List>
    static auto& at(List& list, std::size_t place) {
        const auto inFront = list.m_front.size();
        return place < inFront ? list.m_front[inFront - 1 - place] : list.m_back[place - inFront];
    }

    std::vector<T> m_front;
    std::vector<T> m_back;
};

} // namespace vantor
