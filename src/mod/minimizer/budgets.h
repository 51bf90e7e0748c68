// How much work the algorithms may be given, each bound with its reason.
//
// They are limits of the method, not of the machine: what lies beyond them is left as it is, and
// the output tells. So they are part of the contract, apart from two that say otherwise.
#pragma once

#include <cstddef>

namespace ostrel {

/// The terms of a function times the square of the columns that they use: above it no missing set
/// is worked out. A complement can have exponentially many cubes, and one as large as this bound
/// lets through would seldom be the smaller set.
inline constexpr std::size_t complexityLimit = 4096;

/// The same measure for exclusive-or synthesis, which tries the fewer cubes as left operands the
/// larger the function: above it the first try would take too long already.
inline constexpr std::size_t xorBudget = 25600;

/// The disjoint cover, and each group of an exclusive-or cover, may hold this many cubes when it
/// is counted. More than that can't become a useful pair; it bounds the pairwise comparisons.
inline constexpr std::size_t xorGroupLimit = 128;

/// Points that a bound on covers starts from. Long sums would cost more to look at than to work
/// out; fewer points are a bound as well.
inline constexpr std::size_t boundPoints = 64;

/// Groups with more cubes than this are searched by hash, smaller ones by a plain scan. Below about
/// 16 cubes the scan is faster, above 64 the hash; in between the two take the same time. This
/// one and boundPoints could change without a trace in the output.
inline constexpr std::size_t scanLimit = 32;

/// The most steps that the complement of one function may take, about a second. What the limit on
/// complexity lets through needs less than a tenth of it, where the support is that of the set in
/// hand.
inline constexpr std::size_t effortOfOne = std::size_t{1} << 31U;

/// The most steps for the question whether a function may be a constant. It is asked of every
/// control function, and where it stays open the function is kept.
inline constexpr std::size_t questionEffort = std::size_t{1} << 22U;

}  // namespace ostrel
