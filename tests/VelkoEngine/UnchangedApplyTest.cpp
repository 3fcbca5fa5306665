#include <atomic>
#include <cstdlib>
#include <gtest/gtest.h>
#include <new>

#include "Simulator/Machine/SimulatedMac.h"
#include "VelkoEngine/Hiding/MenuBarEngine.h"
#include "VelkoEngine/Ports/Platform.h"

// Counts what is allocated from the heap. Not built under sanitizers, which bring their own operators.
namespace {
std::atomic<std::size_t> allocations = 0;
}

void* operator new(std::size_t size) {
    ++allocations;
    if (void* const memory = std::malloc(size == 0 ? 1 : size)) {
        return memory;
    }
    throw std::bad_alloc();
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

namespace velko {

TEST(UnchangedApply, AllocatesNothing) {
    SimulatedMac mac;
    AssessmentEngine engine(mac.platform());
    const auto plan = VisibilityPlan::allow({"com.example.first", "com.example.second"});
    int answers = 0;
    const auto apply = [&] { engine.apply(plan, false, [&answers](const auto&) { ++answers; }); };
    auto before = allocations.load();
    apply();
    EXPECT_GT(allocations.load(), before);
    mac.advance(std::chrono::seconds(1));
    before = allocations.load();
    apply();
    EXPECT_EQ(allocations.load(), before);
    EXPECT_EQ(answers, 2);
}

}  // namespace velko
