#pragma once

#include <atomic>
#include <cstdint>
#include <memory>

namespace Quorvex {

template <class T, class Deleter>
class SharedPtr;

namespace Internal {

/// The control block of a SharedPtr: the count of its owners, and how the object ends.
class DataBase {
public:
    DataBase() = default;
    DataBase(const DataBase&) = delete;
    DataBase& operator=(const DataBase&) = delete;
    virtual ~DataBase();
    virtual void destroy(void* object) = 0;

    /// Raises std::exception instead of letting the count overflow.
    void Add();
    /// True for the caller that took the last count: it destroys the object and then the block.
    bool Subtract() noexcept;
    std::int32_t Count() const { return m_count.load(std::memory_order_relaxed); }

protected:
    std::atomic<std::int32_t> m_count{1};
};

} // namespace Internal

/// Mix-in for classes that hand out pointers to themselves. The block is not owned: the object never outlives it.
class EnableSharedPtrFromThis {
public:
    EnableSharedPtrFromThis() = default;
    EnableSharedPtrFromThis(const EnableSharedPtrFromThis&) = delete;
    EnableSharedPtrFromThis& operator=(const EnableSharedPtrFromThis&) = delete;

    /// Called by SharedPtr at the first adoption. Raises std::exception "SharedPtrFromthis: this must not be managed by
    /// SharedPtr" if a block is known already.
    void SetSmartPointerFromThis(Internal::DataBase* block);

    /// A pointer to SELF, which must be this very object. Raises std::exception "SharedPtrFromthis: this must be
    /// managed by SharedPtr" if no SharedPtr holds it.
    template <class Self>
    SharedPtr<Self, std::default_delete<Self>> SharedPtrFromThis(Self* self) const;

protected:
    ~EnableSharedPtrFromThis() = default;

private:
    Internal::DataBase* CheckedBlock() const;

    Internal::DataBase* m_block = nullptr;
};

} // namespace Quorvex
