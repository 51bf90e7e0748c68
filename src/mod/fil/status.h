// The result codes that travel up through all floors.
#pragma once

namespace ostrel {

/// What an operation that can fail answers.
enum class Status {
  Ok = 0,
  Failed = 1,  ///< one item failed; the caller stops
  Fatal = 2,   ///< the whole file or design is unusable
};

}  // namespace ostrel
