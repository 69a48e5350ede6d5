#pragma once

#include "foundation/Exception.h"

#include <cstddef>
#include <new>
#include <type_traits>

namespace Quorvex {

/// A delegate without heap: binding constructs the functor inside the object. A is the type of the one argument, void
/// for none. An unbound Function tests false and must not be called. The bound object is not owned and must outlive the
/// binding.
template <class A>
class Function {
    static constexpr bool takesArgument = !std::is_void_v<A>;
    /// Stands in for the argument of functions that take none, so that one functor class serves both.
    using Argument = std::conditional_t<takesArgument, A, std::nullptr_t>;

public:
    class IFunctor {
    public:
        virtual ~IFunctor() = default;
        virtual void Call(Argument argument) const = 0;
        /// Constructs a copy in the storage of another Function.
        virtual IFunctor* CopyTo(void* storage) const = 0;
    };

    /// F is a plain function pointer, or a callable of at most two words that is copied with the Function.
    template <class F>
    class Functor final : public IFunctor {
    public:
        explicit Functor(F function) : m_function(function) {}
        void Call(Argument argument) const override {
            if constexpr (takesArgument)
                m_function(static_cast<A>(argument));
            else
                m_function();
        }
        IFunctor* CopyTo(void* storage) const override { return ::new (storage) Functor(m_function); }

    private:
        F m_function;
    };

    Function() = default;
    Function(const Function& other) { CopyFrom(other); }
    Function& operator=(const Function& other) {
        if (this != &other) {
            Unbind();
            CopyFrom(other);
        }
        return *this;
    }
    ~Function() { Unbind(); }

    /// A member function of the object. A null object raises Exception "object pointer is nullptr".
    template <class Object, class MemberFunction>
    requires std::is_member_function_pointer_v<MemberFunction>
    void Bind(Object* object, MemberFunction member) {
        if (object == nullptr)
            throw Exception("object pointer is nullptr");
        Emplace(BoundMember<Object, MemberFunction>{object, member});
    }

    /// A plain function.
    template <class F>
    requires std::is_pointer_v<F> && std::is_function_v<std::remove_pointer_t<F>>
    void Bind(F function) { Emplace(function); }

    void Unbind() {
        if (m_functor != nullptr)
            m_functor->~IFunctor();
        m_functor = nullptr;
    }

    explicit operator bool() const { return m_functor != nullptr; }

    template <class... Arguments>
    requires(sizeof...(Arguments) == (takesArgument ? 1 : 0)) void operator()(Arguments&&... arguments) const {
        if constexpr (takesArgument)
            m_functor->Call(arguments...);
        else
            m_functor->Call(nullptr);
    }

private:
    template <class Object, class MemberFunction>
    struct BoundMember {
        Object* object;
        MemberFunction member;

        template <class... Arguments>
        void operator()(Arguments&&... arguments) const {
            (object->*member)(static_cast<Arguments&&>(arguments)...);
        }
    };

    class Incomplete;
    // The functor's virtual table, the object, and a member pointer, which takes two words on some compilers.
    static constexpr std::size_t storageBytes = 2 * sizeof(void*) + sizeof(void(Incomplete::*)());

    template <class F>
    void Emplace(F function) {
        static_assert(sizeof(Functor<F>) <= storageBytes);
        Unbind();
        m_functor = ::new (static_cast<void*>(m_storage)) Functor<F>(function);
    }

    void CopyFrom(const Function& other) {
        if (other.m_functor != nullptr)
            m_functor = other.m_functor->CopyTo(m_storage);
    }

    alignas(void*) std::byte m_storage[storageBytes];
    IFunctor* m_functor = nullptr;
};

} // namespace Quorvex
