#include "bench/AllocationCount.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

std::atomic<std::uint64_t> count{0};

void* counted(void* memory) {
    if (memory == nullptr) throw std::bad_alloc();
    count.fetch_add(1, std::memory_order_relaxed);
    return memory;
}

}  // namespace

// All other forms of new and delete lead to these.
void* operator new(std::size_t size) { return counted(std::malloc(size != 0 ? size : 1)); }
void* operator new(std::size_t size, std::align_val_t alignment) {
    const auto unit = static_cast<std::size_t>(alignment);
    return counted(std::aligned_alloc(unit, (size + unit - 1) / unit * unit));
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t /*size*/) noexcept { std::free(memory); }
void operator delete(void* memory, std::align_val_t /*alignment*/) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t /*size*/, std::align_val_t /*alignment*/) noexcept {
    std::free(memory);
}

namespace calorivo::bench {

std::uint64_t allocationCount() { return count.load(std::memory_order_relaxed); }

}  // namespace calorivo::bench
