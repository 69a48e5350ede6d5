#include "foundation/SharedPtr.h"

#include "foundation/Report.h"

#include <stdexcept>

namespace Quorvex {

namespace Internal {

// Out of line, so that the virtual table of the block exists once.
DataBase::~DataBase() = default;

void DataBase::Add() {
    // The caller owns a count already, so nothing that another thread wrote has to be seen here: relaxed suffices.
    std::int32_t count = m_count.load(std::memory_order_relaxed);
    do {
        // So many owners are a fault of the program; a count that stood still would end in a second destruction.
        if (count == 0x7FFFFFFF)
            throw std::runtime_error("SharedPtr: too many owners");
    } while (!m_count.compare_exchange_weak(count, count + 1, std::memory_order_relaxed));
}

bool DataBase::Subtract() noexcept {
    // Whoever is last must see all that the other owners did to the object before it destroys it, hence acquire and
    // release.
    return m_count.fetch_sub(1, std::memory_order_acq_rel) == 1;
}

} // namespace Internal

void EnableSharedPtrFromThis::SetSmartPointerFromThis(Internal::DataBase* block) {
    if (m_block != nullptr) {
        ReportFailure(__LINE__, "SetSmartPointerFromThis");
        throw std::runtime_error("SharedPtrFromthis: this must not be managed by SharedPtr");
    }
    m_block = block;
}

Internal::DataBase* EnableSharedPtrFromThis::CheckedBlock() const {
    if (m_block == nullptr) {
        ReportFailure(__LINE__, "SharedPtrFromThis");
        throw std::runtime_error("SharedPtrFromthis: this must be managed by SharedPtr");
    }
    return m_block;
}

} // namespace Quorvex
