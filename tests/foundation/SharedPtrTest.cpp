#include "foundation/SharedPtr.h"

#include "foundation/Thread.h"
#include "tests/support/LogCapture.h"

#include <gtest/gtest.h>

#include <array>
#include <utility>
#include <vector>

using namespace Quorvex;
using Quorvex::PAL::Threading::Thread;
using Quorvex::Test::LogCapture;

namespace {

int alive = 0;

struct Base {
    Base() { ++alive; }
    Base(const Base&) = delete;
    Base& operator=(const Base&) = delete;
    // Not virtual: the block must know what the object is.
    ~Base() { --alive; }
    int value = 1;
};

struct Other {
    virtual ~Other() = default;
    int padding = 0;
};

struct Derived : Other, Base {
    ~Derived() override { ++derivedEnded; }
    static inline int derivedEnded = 0;
};

struct CountingDeleter {
    void operator()(int* object) const {
        ++count;
        delete object;
    }
    static inline int count = 0;
};

class Managed : public EnableSharedPtrFromThis {
public:
    SharedPtr<Managed> Self() { return SharedPtrFromThis(this); }
};

class DerivedManaged : public Managed {};

/// A block whose count can be set.
class OpenBlock final : public Internal::DataBase {
public:
    void destroy(void*) override {}
    void SetCount(std::int32_t count) { m_count = count; }
};

/// The text of the std::exception that the action raises.
template <class Action>
std::string StandardText(const Action& action) {
    try {
        action();
    } catch (const std::exception& failure) {
        return failure.what();
    }
    return "(nothing was raised)";
}

TEST(SharedPtrTest, EmptyPointerHoldsNothing) {
    const SharedPtr<int> pointer;
    EXPECT_FALSE(pointer);
    EXPECT_EQ(pointer.get(), nullptr);
    EXPECT_TRUE(pointer == nullptr);
    EXPECT_TRUE(SharedPtr<int>(static_cast<int*>(nullptr)) == nullptr);
}

TEST(SharedPtrTest, ObjectLivesAsLongAsItsLastOwner) {
    {
        SharedPtr<Base> first(new Base);
        SharedPtr<Base> second(first);
        EXPECT_EQ(alive, 1);
        first.reset();
        EXPECT_EQ(alive, 1);
        EXPECT_EQ(second->value, 1);
        EXPECT_EQ((*second).value, 1);
    }
    EXPECT_EQ(alive, 0);
}

TEST(SharedPtrTest, AssignmentReleasesTheFormerObject) {
    SharedPtr<Base> pointer = MakeShared<Base>();
    pointer = MakeShared<Base>();
    EXPECT_EQ(alive, 1);
    const SharedPtr<Base>& same = pointer;
    pointer = same;
    EXPECT_EQ(alive, 1);
    pointer = nullptr;
    EXPECT_EQ(alive, 0);
}

TEST(SharedPtrTest, MoveLeavesTheSourceEmpty) {
    std::vector<SharedPtr<Base>> sources{MakeShared<Base>()};
    const SharedPtr<Base> target(std::move(sources[0]));
    EXPECT_TRUE(sources[0] == nullptr);
    EXPECT_EQ(alive, 1);
}

TEST(SharedPtrTest, PointerToABaseDestroysTheDerivedObject) {
    Derived::derivedEnded = 0;
    {
        SharedPtr<Base> base;
        {
            const SharedPtr<Derived> derived(new Derived);
            base = derived;
            EXPECT_EQ(base.get(), derived.get());
        }
        EXPECT_EQ(Derived::derivedEnded, 0);
    }
    EXPECT_EQ(Derived::derivedEnded, 1);
    EXPECT_EQ(alive, 0);
}

TEST(SharedPtrTest, BlockKeepsItsDeleter) {
    CountingDeleter::count = 0;
    {
        const SharedPtr<int, CountingDeleter> own(new int(5));
        const SharedPtr<int> other(own);
        EXPECT_EQ(*other, 5);
    }
    EXPECT_EQ(CountingDeleter::count, 1);
}

TEST(SharedPtrTest, DynamicCastSharesOrIsEmpty) {
    const SharedPtr<Other> other(new Derived);
    {
        const SharedPtr<Derived> derived = other.DynamicCast<Derived>();
        EXPECT_EQ(derived.get(), other.get());
    }
    EXPECT_EQ(alive, 1);
    EXPECT_FALSE(SharedPtr<Other>(new Other).DynamicCast<Derived>());
}

TEST(SharedPtrTest, CountStartsAtOneAndIsNeverSaturated) {
    OpenBlock block;
    EXPECT_EQ(block.Count(), 1);
    block.SetCount(0x7FFFFFFE);
    block.Add();
    EXPECT_EQ(block.Count(), 0x7FFFFFFF);
    EXPECT_THROW(block.Add(), std::exception);
    EXPECT_EQ(block.Count(), 0x7FFFFFFF);
}

TEST(SharedPtrTest, LastOwnerIsToldByTheCount) {
    OpenBlock block;
    block.Add();
    EXPECT_FALSE(block.Subtract());
    EXPECT_TRUE(block.Subtract());
}

// The thread sanitizer watches this one.
TEST(SharedPtrTest, CountsAreAtomic) {
    const SharedPtr<Base> shared = MakeShared<Base>();
    const auto copyOften = [](void* argument) {
        for (int i = 0; i < 20000; ++i) {
            const SharedPtr<Base> copy(*static_cast<const SharedPtr<Base>*>(argument));
            if (copy->value != 1)
                throw 0;
        }
    };
    std::array<Thread, 4> threads;
    for (Thread& thread : threads)
        thread.Run(copyOften, const_cast<SharedPtr<Base>*>(&shared));
    for (Thread& thread : threads) {
        thread.Wait();
        EXPECT_NO_THROW(thread.RethrowThreadException());
    }
    EXPECT_EQ(alive, 1);
}

// The object ends on whichever thread is last, after everything that the others wrote to it.
TEST(SharedPtrTest, LastOfTwoThreadsDestroysTheObject) {
    for (int round = 0; round < 200; ++round) {
        std::array<SharedPtr<Base>, 2> owners;
        owners[0] = MakeShared<Base>();
        owners[1] = owners[0];
        std::array<Thread, 2> threads;
        for (std::size_t i = 0; i < 2; ++i)
            threads[i].Run([](void* owner) { static_cast<SharedPtr<Base>*>(owner)->reset(); }, &owners[i]);
        for (Thread& thread : threads)
            thread.Wait();
        ASSERT_EQ(alive, 0);
    }
}

TEST(EnableSharedPtrFromThisTest, ObjectHandsOutPointersToItself) {
    const SharedPtr<Managed> owner = MakeShared<Managed>();
    const SharedPtr<Managed> self = owner->Self();
    EXPECT_EQ(self, owner);
}

TEST(EnableSharedPtrFromThisTest, PointerFromThisKeepsTheObjectAlive) {
    SharedPtr<Managed> owner = MakeShared<DerivedManaged>();
    const SharedPtr<Managed> self = owner->Self();
    owner.reset();
    EXPECT_EQ(self->Self(), self);
}

TEST(EnableSharedPtrFromThisTest, WithoutAnOwnerItReportsAndRaises) {
    LogCapture log;
    Managed onTheStack;
    EXPECT_EQ(StandardText([&] { onTheStack.Self(); }), "SharedPtrFromthis: this must be managed by SharedPtr");
    EXPECT_NE(log.Text().find(": SharedPtrFromThis failed with error code "), std::string::npos);
}

TEST(EnableSharedPtrFromThisTest, SecondAdoptionReportsAndRaisesAndLeavesTheObject) {
    LogCapture log;
    const SharedPtr<Managed> owner = MakeShared<Managed>();
    EXPECT_EQ(StandardText([&] { SharedPtr<Managed> second(owner.get()); }),
              "SharedPtrFromthis: this must not be managed by SharedPtr");
    EXPECT_NE(log.Text().find(": SetSmartPointerFromThis failed with error code "), std::string::npos);
    EXPECT_EQ(owner->Self(), owner);
}

} // namespace
