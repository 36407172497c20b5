// SPDX-License-Identifier: Apache-2.0
#ifndef VESK_CONVERSION_HPP
#define VESK_CONVERSION_HPP

#include <vesk/export.hpp>
#include <vesk/typeinterface.hpp>

#include <stdexcept>

namespace vesk
{

class AnyConstReference;
class AnyReference;

/// Thrown where a value is not of the type it is taken for, or cannot be converted. The message of a
/// conversion names both types and the place in the source that could not be converted, as in
/// `cannot convert peer::Package to ::vesk::PackageInfo: behaviors[2]: without "nature"`.
class VESK_EXPORT ConversionError : public std::runtime_error
{
public:
  using std::runtime_error::runtime_error;
};

/// Replaces the value that \p target refers to by a converted copy of \p source. If this throws,
/// the value is unchanged.
///
/// A value of the same type is copied. Numbers convert if the target can hold them: integers
/// exactly, floating point with rounding. Lists, maps and pairs convert element by element. An
/// AnyValue converts as the value it holds, and any value converts to an AnyValue. A map with string
/// keys is treated as a struct whose members are its entries. Structs convert by the names of their
/// members, in whatever order. Where the names differ, it is enough that one of the two types
/// accepts the difference: the target's is asked first whether it can do without the members that
/// the source lacks (StructTypeInterface::convertFrom), then the source's whether its surplus members
/// may be dropped (StructTypeInterface::convertTo). So two versions of a record can be exchanged both
/// ways if the newer one says what it has added (StructVersioningDelegateAddFields); the older one
/// need not know.
///
/// All else, and values nested more than 128 deep, throw ConversionError.
VESK_EXPORT void convert(const AnyConstReference& source, const AnyReference& target);

namespace detail
{
/// Values may come from untrusted sources; deeper nesting could exhaust the stack.
inline constexpr int deepestNesting = 128;

/// Like convert(), but converts in place: when it throws, \p target is incomplete, to be discarded.
VESK_EXPORT void convertAfresh(const AnyConstReference& source, const AnyReference& target);

/// Where \p source, or what it holds if it is an AnyValue, has a value of this type. Throws as
/// convert() does when it has none.
VESK_EXPORT const void* addressOfHeld(const AnyConstReference& source, const TypeInterface& wanted);
} // namespace detail

} // namespace vesk

#endif
