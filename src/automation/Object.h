// SPDX-License-Identifier: MIT
// The reference-counted base of every object and the reference that holds one.
#pragma once

#include "base/String.h"

#include <cstdint>
#include <optional>
#include <span>
#include <type_traits>
#include <utility>

namespace vlgs {

class ClassInfo;
class Variant;

/// Number of a member in late-bound calls; 0 is the default member, -4 the enumeration member.
using DispatchId = std::int32_t;
inline constexpr DispatchId defaultMember = 0;
inline constexpr DispatchId enumerationMember = -4;
inline constexpr DispatchId unknownMember = -1;

/// The kinds of members, and what a late-bound call asks for: one kind, or one of two.
enum class InvokeKind : std::uint8_t {
    Method = 1,
    PropertyGet = 2,
    MethodOrGet = 3,
    PropertyPut = 4,
    PropertyPutRef = 8,
    Write = 12,
};
constexpr bool covers(InvokeKind asked, InvokeKind kind) {
    return (static_cast<unsigned>(asked) & static_cast<unsigned>(kind)) != 0;
}
constexpr bool writes(InvokeKind kind) {
    return covers(InvokeKind::Write, kind);
}

/// An argument given for a parameter: by the parameter's name in any case, or by its place from 0.
struct NamedArgument {
    std::u16string_view name;
    Variant* value;
    std::optional<std::int32_t> place = {};
};

/// Arguments of a late-bound call. Positional ones come in the order of the parameters (the value of a
/// property write last); a by-reference parameter writes its new value back into the caller's Variant, also
/// when the member raises.
struct Arguments {
    std::span<Variant> positional;
    std::span<const NamedArgument> named = {};
    /// Where the caller wants to know which ones went to by-reference parameters: bit `i` for the i-th
    /// argument, positional ones first.
    std::uint32_t* byReference = nullptr;
};

/// Objects are created by `make<T>` and live while a Ref holds them. They are used only on the thread that
/// made them, so the count is a plain number.
class VLGS_API Object {
  public:
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;

    void retain() const noexcept { ++references_; }
    void release() const noexcept;
    std::int32_t referenceCount() const noexcept { return static_cast<std::int32_t>(references_); }

    /// Whether the calling thread is the one that made the object.
    bool isOfThisThread() const noexcept;

    /// The description of the object's class; null for an object that is not of this library. An object that
    /// has one is called through it: only objects without one override `idOf` and `invoke`.
    virtual const ClassInfo* classInfo() const noexcept { return nullptr; }

    /// The number of the member of that name in any case, or `unknownMember`.
    virtual DispatchId idOf(std::u16string_view name) const;

    /// Calls a member. Raises 438 (no such member), 448 to 450 (arguments), 13 and 6 (coercion), and what the
    /// member itself raises.
    virtual Variant invoke(DispatchId member, InvokeKind kind, const Arguments& arguments);

    /// Asks `watcher` to be called once, with `context` and the object's address, as the object ends. One
    /// watcher serves the whole program; asking again changes nothing.
    void watchEnd(void (*watcher)(const Object*) noexcept) const noexcept;

  protected:
    Object() noexcept;
    virtual ~Object();

  private:
    mutable std::uint32_t references_ = 0;
    std::uint32_t thread_ : 31;
    mutable std::uint32_t watched_ : 1;
};

/// A counted reference to an object, or to none.
template <class T>
class Ref {
  public:
    using element_type = T;
    constexpr Ref() noexcept = default;
    constexpr Ref(std::nullptr_t) noexcept {}
    explicit Ref(T* object) noexcept : object_(object) { retain(); }
    Ref(const Ref& other) noexcept : object_(other.object_) { retain(); }
    Ref(Ref&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
    template <class U>
    requires std::is_convertible_v<U*, T*> Ref(const Ref<U>& other)
    noexcept : object_(other.get()) { retain(); }
    template <class U>
    requires std::is_convertible_v<U*, T*> Ref(Ref<U>&& other)
    noexcept : object_(other.detach()) {}
    ~Ref() {
        if (object_)
            object_->release();
    }
    Ref& operator=(Ref other) noexcept {
        std::swap(object_, other.object_);
        return *this;
    }

    T* get() const noexcept { return object_; }
    T* operator->() const noexcept { return object_; }
    T& operator*() const noexcept { return *object_; }
    explicit operator bool() const noexcept { return object_ != nullptr; }

    /// Gives the counted reference away; the caller owes the release.
    T* detach() noexcept { return std::exchange(object_, nullptr); }
    /// Takes over a counted reference that somebody else owed.
    static Ref attach(T* object) noexcept {
        Ref result;
        result.object_ = object;
        return result;
    }

    friend bool operator==(const Ref& a, const Ref& b) noexcept { return a.object_ == b.object_; }
    friend bool operator==(const Ref& a, std::nullptr_t) noexcept { return a.object_ == nullptr; }

  private:
    void retain() const noexcept {
        if (object_)
            object_->retain();
    }
    T* object_ = nullptr;
};

/// Creates an object: `auto document = make<INIFile>();`
template <class T, class... Args>
Ref<T> make(Args&&... args) {
    return Ref<T>(new T(std::forward<Args>(args)...));
}

/// What an enumeration member hands out: the members of a collection, one after the other.
class VLGS_API Enumerator : public Object {
  public:
    /// Moves to the next member and stores it in `item`; false, with `item` untouched, behind the last one.
    virtual bool next(Variant& item) = 0;
    virtual void reset() = 0;
    /// A second enumerator that stands where this one stands.
    virtual Ref<Enumerator> clone() const = 0;
};

} // namespace vlgs
