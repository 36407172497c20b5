// SPDX-License-Identifier: Apache-2.0
#ifndef XOVALUE_XOVALUE_HPP
#define XOVALUE_XOVALUE_HPP

#include <xovalue/export.hpp>

#include <iosfwd>
#include <string>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

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
/// Values come from strangers, so that reading never fails: past the end of an array, and inside a
/// value that is no array, there is an empty value, and a value read as another kind than its own
/// gives an empty text, false or the size 0. Writing there throws.
///
/// A copy shares nothing with its source. An empty value, a bool and a text of up to 15 bytes need
/// no memory beside the value itself, an array needs one block. A value moved from is empty. A
/// value may be assigned a part of itself. Copying, comparing, printing and destroying go as deep
/// as arrays are nested, on the stack. Threads may read one value at once; who writes must be alone.
class XOVALUE_EXPORT XOValue
{
public:
  /// An empty value.
  XOValue() noexcept = default;
  XOValue(const XOValue& other) = default;
  XOValue(XOValue&& other) noexcept : content(std::exchange(other.content, Content())) {}
  /// A text; any bytes, usually UTF-8.
  XOValue(std::string text) : content(std::move(text)) {}
  /// A NUL-terminated text; a null pointer gives an empty text.
  XOValue(const char* text);
  /// A bool, and nothing that merely converts to one, as pointers do.
  template <typename Bool, std::enable_if_t<std::is_same_v<Bool, bool>, int> = 0>
  XOValue(Bool flag) noexcept : content(flag)
  {}
  XOValue(int) = delete; ///< there are no numbers; and a 0 is no null pointer
  XOValue(std::nullptr_t) = delete;

  XOValue& operator=(const XOValue& other);
  XOValue& operator=(XOValue&& other) noexcept;
  ~XOValue() = default;

  /// Whether the value is anything but empty; an array of size 0 is valid.
  bool isValid() const noexcept { return !std::holds_alternative<std::monostate>(content); }
  bool isString() const noexcept { return std::holds_alternative<std::string>(content); }
  bool isBool() const noexcept { return std::holds_alternative<bool>(content); }
  bool isArray() const noexcept { return std::holds_alternative<Array>(content); }

  /// The text; an empty one that lives to the end of the program when this is no text.
  /// \{
  const std::string& toString() const noexcept;
  operator const std::string&() const noexcept { return toString(); }
  /// \}

  /// The bool; false when this is none. The conversion is to bool only, not on to numbers.
  /// \{
  bool toBool() const noexcept;
  template <typename Bool, std::enable_if_t<std::is_same_v<Bool, bool>, int> = 0>
  operator Bool() const noexcept
  {
    return toBool();
  }
  /// \}

  /// Number of values in the array; 0 when this is no array.
  int getSize() const noexcept;

  /// Makes this an array of \p size empty values, whatever it was. Throws std::out_of_range when
  /// \p size is negative.
  void arraySetSize(int size);

  /// The value at \p index, counted from 0, for reading. Where there is none, an empty value that
  /// lives to the end of the program.
  const XOValue& operator[](int index) const noexcept;
  /// The value at \p index for writing. Throws std::out_of_range where there is none, also in a
  /// value that is no array.
  XOValue& operator[](int index);

  /// Equal when of the same kind, with equal contents.
  /// \{
  friend bool operator==(const XOValue& left, const XOValue& right)
  {
    return left.content == right.content;
  }
  friend bool operator!=(const XOValue& left, const XOValue& right) { return !(left == right); }
  /// \}

private:
  using Array = std::vector<XOValue>;
  using Content = std::variant<std::monostate, std::string, bool, Array>;

  Content content;
};

/// Prints the value in the form of JSON, the empty value as null. An array that holds arrays takes
/// a line for each of its values, indented by 2. Bytes that are no UTF-8 go out as they are.
XOVALUE_EXPORT std::ostream& operator<<(std::ostream& out, const XOValue& value);

} // namespace XO

#endif
