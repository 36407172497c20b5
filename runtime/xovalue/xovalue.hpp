// SPDX-License-Identifier: Apache-2.0
#ifndef XOVALUE_XOVALUE_HPP
#define XOVALUE_XOVALUE_HPP

#include <xovalue/export.hpp>

#include <cstddef>
#include <iosfwd>
#include <new>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace XO
{

/// A value that travels between modules which share no types: nothing (the empty value), a text, a
/// bool, or an array of further values.
///
/// \code
/// XO::XOValue pair;
/// pair.arraySetSize(2);
/// pair[0] = "uuid";
/// pair[1] = std::string("org.example.greeting");
/// const std::string& uuid = std::as_const(pair)[1];
/// \endcode
///
/// Values come from untrusted sources, so reading never fails: an index past the end of an array,
/// or into a value that is no array, gives an empty value; a value read as another kind gives an
/// empty text, false or the size 0. Writing to such an index throws.
///
/// A copy shares nothing with its source. An empty value, a bool and a text of up to 15 bytes need
/// no memory beside the value itself; an array needs one allocation, which holds its values. A value
/// moved from is empty. A value may be assigned a part of itself, and a part may be assigned a copy
/// of the whole. But the whole must not be moved into a part of itself, not even by swapping the
/// two: it would contain itself and never be freed. Copying, comparing, printing and destroying use
/// no more stack for deeper nesting, and destroying allocates nothing. Threads may read one value
/// at once; a thread that writes must be the only user of that value. Distinct elements are
/// distinct values.
///
/// When memory runs out, std::bad_alloc is thrown, and the value is as it was.
class XOVALUE_EXPORT XOValue
{
  template <typename Type>
  using IfBool = std::enable_if_t<std::is_same_v<Type, bool>, int>;
  template <typename Type>
  using IfText = std::enable_if_t<
      std::is_convertible_v<const Type&, std::string_view> && !std::is_null_pointer_v<Type>, int>;

public:
  /// An empty value.
  XOValue() noexcept = default;
  XOValue(const XOValue& other);
  XOValue(XOValue&& other) noexcept { takeFrom(other); }
  /// A text; any bytes, usually UTF-8.
  XOValue(std::string text) noexcept : kind(Kind::String)
  {
    new (&content.text) std::string(std::move(text));
  }
  explicit XOValue(std::string_view text) : XOValue(std::string(text)) {}
  /// A text from a NUL-terminated string; a null pointer gives an empty text.
  XOValue(const char* text) : XOValue(std::string(text != nullptr ? text : "")) {}
  /// A bool, and nothing that merely converts to one, as pointers do.
  template <typename Bool, IfBool<Bool> = 0>
  XOValue(Bool flag) noexcept : kind(Kind::Bool)
  {
    content.flag = flag;
  }
  XOValue(int) = delete; ///< there are no numbers, and 0 must not convert to a null pointer
  XOValue(std::nullptr_t) = delete;

  /// Makes this a copy of another value, which may be a part of this one.
  XOValue& operator=(const XOValue& other) { return *this = XOValue(other); }
  XOValue& operator=(XOValue&& other) noexcept
  {
    XOValue taken(std::move(other)); // out of this value, if it is a part of it
    clear();
    takeFrom(taken);
    return *this;
  }
  /// Makes this a text, from a std::string, a string view or a NUL-terminated string.
  template <typename Text, IfText<Text> = 0>
  XOValue& operator=(const Text& text)
  {
    if constexpr (std::is_pointer_v<Text>)
    {
      assignText(text != nullptr ? text : "");
    }
    else
    {
      assignText(text);
    }
    return *this;
  }
  ~XOValue() { clear(); }

  /// Whether the value is anything but empty; an array of size 0 is valid.
  bool isValid() const noexcept { return kind != Kind::Empty; }
  bool isString() const noexcept { return kind == Kind::String; }
  bool isBool() const noexcept { return kind == Kind::Bool; }
  bool isArray() const noexcept { return kind == Kind::Array; }

  /// The text; when this is no text, an empty one that lives to the end of the program.
  /// \{
  const std::string& toString() const noexcept;
  operator const std::string&() const noexcept { return toString(); }
  /// \}

  /// The bool; false when this is none. The conversion is to bool only, not on to numbers.
  /// \{
  bool toBool() const noexcept { return isBool() && content.flag; }
  template <typename Bool, IfBool<Bool> = 0>
  operator Bool() const noexcept
  {
    return toBool();
  }
  /// \}

  /// Number of values in the array; 0 when this is no array.
  int getSize() const noexcept { return isArray() ? content.array->size : 0; }

  /// Makes this an array of \p size empty values, whatever it was. Throws std::out_of_range when
  /// \p size is negative.
  void arraySetSize(int size);

  /// The value at \p index, counted from 0, for reading. Where there is none, an empty value that
  /// lives to the end of the program.
  const XOValue& operator[](int index) const noexcept
  {
    return has(index) ? begin()[index] : none();
  }
  /// The value at \p index for writing. Throws std::out_of_range where there is none, also in a
  /// value that is no array.
  XOValue& operator[](int index) { return has(index) ? begin()[index] : throwOutOfRange(index); }

  /// The values of the array, for loops; none when this is no array. Like references to elements,
  /// these pointers are valid until the array is assigned to, given a size or destroyed.
  /// \{
  const XOValue* begin() const noexcept { return isArray() ? valuesOf(content.array) : nullptr; }
  const XOValue* end() const noexcept { return begin() + getSize(); }
  XOValue* begin() noexcept { return isArray() ? valuesOf(content.array) : nullptr; }
  XOValue* end() noexcept { return begin() + getSize(); }
  /// \}

  /// Equal when of the same kind, with equal contents.
  /// \{
  friend XOVALUE_EXPORT bool operator==(const XOValue& left, const XOValue& right);
  friend bool operator!=(const XOValue& left, const XOValue& right) { return !(left == right); }
  /// \}

private:
  enum class Kind : unsigned char
  {
    Empty,
    Bool,
    String,
    Array
  };
  /// The header of an array; its values follow in the same allocation.
  struct Array
  {
    int size;
    Array* next; ///< the array to destroy after this one; used only while destroying
  };
  union Content
  {
    Content() {}  // NOLINT(modernize-use-equals-default): the kind tells what is in it
    ~Content() {} // NOLINT(modernize-use-equals-default)
    bool flag;
    std::string text;
    Array* array;
  };

  static XOValue* valuesOf(Array* array) noexcept { return reinterpret_cast<XOValue*>(array + 1); }
  bool has(int index) const noexcept { return index >= 0 && index < getSize(); }
  static const XOValue& none() noexcept;
  [[noreturn]] XOValue& throwOutOfRange(int index) const;
  void assignText(std::string_view text);
  /// Makes this empty value what \p other was, and \p other empty.
  void takeFrom(XOValue& other) noexcept;
  void clear() noexcept
  {
    if (kind > Kind::Bool)
    {
      destroyContent();
    }
    kind = Kind::Empty;
  }
  void destroyContent() noexcept;

  Kind kind = Kind::Empty;
  Content content;
};

/// Prints the value as JSON, the empty value as null. An array that contains arrays has a line for
/// each of its values, indented by 2 for each level up to the 50th. Invalid UTF-8 is printed as it
/// is.
XOVALUE_EXPORT std::ostream& operator<<(std::ostream& out, const XOValue& value);

} // namespace XO

#endif
