#pragma once

// What the public headers use of the standard library and of Qt, as large as in a release build with MSVC's standard
// library and Qt 6 on x86-64: enough to lay the headers' classes out, and nothing that could run. Of a type that is
// only handed on the size does not matter.

namespace std {

using int8_t = signed char;
using int16_t = short;
using int32_t = int;
using int64_t = long long;
using uint8_t = unsigned char;
using uint16_t = unsigned short;
using uint32_t = unsigned int;
using uint64_t = unsigned long long;
using size_t = unsigned long long;
using ptrdiff_t = long long;
using nullptr_t = decltype(nullptr);
enum class byte : unsigned char {};

template <typename T>
struct remove_reference
{
    using type = T;
};
template <typename T>
struct remove_reference<T&>
{
    using type = T;
};
template <typename T>
struct remove_reference<T&&>
{
    using type = T;
};
template <typename T>
using remove_reference_t = typename remove_reference<T>::type;

template <typename T>
constexpr bool is_polymorphic_v = __is_polymorphic(T);
template <typename T>
constexpr bool is_copy_constructible_v = __is_constructible(T, const T&);
template <typename T>
constexpr bool is_move_constructible_v = __is_constructible(T, T&&);
template <typename T>
constexpr bool is_copy_assignable_v = __is_assignable(T&, const T&);
template <typename T>
constexpr bool is_move_assignable_v = __is_assignable(T&, T&&);

template <typename T>
constexpr remove_reference_t<T>&& move(T&& value) noexcept
{
    return static_cast<remove_reference_t<T>&&>(value);
}
template <typename T, typename U = T>
T exchange(T& value, U&& other);

template <size_t Words>
struct Opaque
{
    void* words[Words];
};

template <typename T>
class allocator;
template <typename T>
class vector : Opaque<3>
{
public:
    vector();
    vector(const vector& other);
    vector(vector&& other) noexcept;
    vector& operator=(const vector& other);
    vector& operator=(vector&& other) noexcept;
    ~vector();
};
template <typename Char>
class basic_string : Opaque<4>
{
public:
    basic_string();
    basic_string(const basic_string& other);
    basic_string(basic_string&& other) noexcept;
    basic_string& operator=(const basic_string& other);
    basic_string& operator=(basic_string&& other) noexcept;
    ~basic_string();
};
using string = basic_string<char>;
template <typename T, size_t Size>
struct array
{
    T elements[Size];
};
template <typename First, typename Second>
struct pair
{
    First first;
    Second second;
};
template <typename T>
class complex
{
    T m_real;
    T m_imaginary;
};
template <typename Key, typename Value>
class unordered_map : Opaque<8>
{
public:
    unordered_map();
    unordered_map(const unordered_map& other);
    unordered_map& operator=(const unordered_map& other);
    ~unordered_map();
};

#define __cpp_lib_expected 202211L
template <typename T>
class optional;
template <typename Value, typename Error>
class expected;
class any : Opaque<8>
{
public:
    any();
    any(const any& other);
    any& operator=(const any& other);
    ~any();
};
class bad_any_cast
{
};
template <typename T>
T any_cast(any& value);

template <typename Signature>
class function;
template <typename Result, typename... Arguments>
class function<Result(Arguments...)> : Opaque<8>
{
public:
    function();
    function(nullptr_t);
    function(const function& other);
    function& operator=(const function& other);
    ~function();
    explicit operator bool() const;
    Result operator()(Arguments... arguments) const;
};

template <typename T>
class shared_ptr : Opaque<2>
{
public:
    shared_ptr() noexcept;
    shared_ptr(const shared_ptr& other) noexcept;
    shared_ptr& operator=(const shared_ptr& other) noexcept;
    ~shared_ptr();
    T* get() const noexcept;
    void reset() noexcept;
};
template <typename T>
class weak_ptr : Opaque<2>
{
public:
    weak_ptr() noexcept;
    weak_ptr(const weak_ptr& other) noexcept;
    weak_ptr(const shared_ptr<T>& other) noexcept;
    weak_ptr& operator=(const weak_ptr& other) noexcept;
    ~weak_ptr();
    shared_ptr<T> lock() const noexcept;
};
template <typename To, typename From>
shared_ptr<To> static_pointer_cast(const shared_ptr<From>& from);
template <typename T, typename... Arguments>
shared_ptr<T> make_shared(Arguments&&... arguments);
template <typename T>
class unique_ptr : Opaque<1>
{
public:
    unique_ptr() noexcept;
    unique_ptr(unique_ptr&& other) noexcept;
    unique_ptr& operator=(unique_ptr&& other) noexcept;
    ~unique_ptr();
};

template <typename T, typename... Arguments>
unique_ptr<T> make_unique(Arguments&&... arguments);
class bad_alloc
{
};

class mutex : Opaque<10>
{
public:
    mutex();
    mutex(const mutex&) = delete;
    mutex& operator=(const mutex&) = delete;
    ~mutex();
};
template <typename Mutex>
class lock_guard
{
public:
    explicit lock_guard(Mutex& mutex);
    ~lock_guard();
};
template <typename Mutex>
class unique_lock
{
public:
    explicit unique_lock(Mutex& mutex);
    ~unique_lock();
};

template <typename T>
class span;
namespace chrono {
template <typename Number>
class duration;
class sys_seconds;
} // namespace chrono

class error_code
{
    int m_value;
    const void* m_category;
};

} // namespace std

class QString : std::Opaque<3>
{
public:
    QString();
    QString(const QString& other);
    QString& operator=(const QString& other);
    ~QString();
};
class QByteArray;
class QDateTime;
template <typename T>
class QList;
class QObject
{
public:
    QObject();
    QObject(const QObject&) = delete;
    QObject& operator=(const QObject&) = delete;
    virtual ~QObject();
    virtual const void* metaObject() const;

private:
    void* m_data;
};
#define Q_OBJECT                                                                                                       \
public:                                                                                                                \
    const void* metaObject() const override;                                                                           \
                                                                                                                       \
private:
#define Q_SIGNALS public
