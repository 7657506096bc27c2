// uninitialized.h: vectors whose new elements are not zeroed. Not installed.
#ifndef ZQMATH_UNINITIALIZED_H
#define ZQMATH_UNINITIALIZED_H

#include "frame/prefault.h"

#include <cstddef>
#include <memory>
#include <new>
#include <utility>
#include <vector>

namespace zq::detail {

/// The standard allocator, except that a value made without arguments is left uninitialised:
/// a large array about to be overwritten is then written once, and its fresh pages fault in
/// where they are filled rather than where the array is sized.
template <class T>
class UninitializedAllocator {
public:
    using value_type = T;

    UninitializedAllocator() = default;
    template <class U>
    UninitializedAllocator(const UninitializedAllocator<U>&) noexcept {}

    /// A large array is asked for in large pages: they fault in many times faster.
    T* allocate(std::size_t n) {
        T* p = std::allocator<T>().allocate(n);
        AdviseLargePages(p, n * sizeof(T));
        return p;
    }
    void deallocate(T* p, std::size_t n) { std::allocator<T>().deallocate(p, n); }
    /// Default initialisation: nothing is written for a trivial type.
    template <class U>
    void construct(U* p) noexcept {
        ::new (static_cast<void*>(p)) U;
    }
    template <class U, class... Args>
    void construct(U* p, Args&&... args) {
        ::new (static_cast<void*>(p)) U(std::forward<Args>(args)...);
    }

    template <class U>
    bool operator==(const UninitializedAllocator<U>&) const noexcept {
        return true;
    }
    template <class U>
    bool operator!=(const UninitializedAllocator<U>&) const noexcept {
        return false;
    }
};

/// A vector of trivial values whose resize leaves the new ones unset.
template <class T>
using UninitializedVector = std::vector<T, UninitializedAllocator<T>>;

/// Reserves room for n values in a standard vector, in large pages when it is large.
template <class T>
void ReserveLarge(std::vector<T>& values, std::size_t n) {
    values.reserve(n);
    AdviseLargePages(values.data(), n * sizeof(T));
}

} // namespace zq::detail

#endif
