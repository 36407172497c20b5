// SPDX-License-Identifier: Apache-2.0
#include <edit/commonsubsequence.hpp>
#include <edit/json.hpp>
#include <edit/pairing.hpp>

#include <algorithm>
#include <string>

namespace vesk::edit
{
namespace
{
using Elements = std::vector<AnyConstReference>;

/// A part of a list.
struct Span
{
  std::size_t begin;
  std::size_t end;
};

/// How elements are paired. Each way is applied to the elements that the one before it has left over
/// between its pairs.
enum class PairedBy
{
  Content,
  Identity,
  Turn
};

std::vector<std::string> keysOf(const Elements& elements, const Span& span, PairedBy way)
{
  std::vector<std::string> keys;
  for (std::size_t i = span.begin; i < span.end; ++i)
  {
    const bool isStruct = elements[i].type()->kind() == TypeKind::Struct;
    keys.push_back(
        toJson(way == PairedBy::Identity && isStruct ? elements[i].member(0) : elements[i], -1));
  }
  return keys;
}

class Pairing
{
public:
  Pairing(const Elements& first, const Elements& second) : before(first), after(second) {}

  std::vector<Pair> pairs;

  void pairAll()
  {
    Span left{0, before.size()};
    Span right{0, after.size()};
    // Most of two long lists is equal, and comparing values costs less than finding them.
    while (left.begin < left.end && right.begin < right.end &&
           before[left.begin] == after[right.begin])
    {
      pairs.push_back({left.begin++, right.begin++});
    }
    while (left.begin < left.end && right.begin < right.end &&
           before[left.end - 1] == after[right.end - 1])
    {
      --left.end;
      --right.end;
    }
    pair(left, right, PairedBy::Content);
    for (; left.end < before.size(); ++left.end, ++right.end)
    {
      pairs.push_back({left.end, right.end});
    }
  }

private:
  void pair(Span left, Span right, PairedBy way)
  {
    if (way == PairedBy::Turn || left.begin == left.end || right.begin == right.end)
    {
      pairInTurn(left, right);
      return;
    }
    const auto nextWay = way == PairedBy::Content ? PairedBy::Identity : PairedBy::Turn;
    const std::size_t firstLeft = left.begin;
    const std::size_t firstRight = right.begin;
    for (const auto& [i, j] :
         commonSubsequence(keysOf(before, left, way), keysOf(after, right, way)))
    {
      const std::size_t leftEnd = firstLeft + i;
      const std::size_t rightEnd = firstRight + j;
      pair({left.begin, leftEnd}, {right.begin, rightEnd}, nextWay);
      pairs.push_back({leftEnd, rightEnd});
      left.begin = leftEnd + 1;
      right.begin = rightEnd + 1;
    }
    pair(left, right, nextWay);
  }

  void pairInTurn(Span left, Span right)
  {
    while (left.begin < left.end || right.begin < right.end)
    {
      Pair next;
      if (left.begin < left.end)
      {
        next.before = left.begin++;
      }
      if (right.begin < right.end)
      {
        next.after = right.begin++;
      }
      pairs.push_back(next);
    }
  }

  const Elements& before;
  const Elements& after;
};
} // namespace

std::vector<Pair> pairsOf(const std::vector<AnyConstReference>& before,
                          const std::vector<AnyConstReference>& after)
{
  Pairing pairing(before, after);
  pairing.pairAll();
  return std::move(pairing.pairs);
}

} // namespace vesk::edit
