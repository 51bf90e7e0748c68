// What happens when an allocation fails.
#pragma once

namespace ostrel {

/// Installs the handler of failed allocations: it reports the failure and asks for another try, a
/// few times; then the process ends with exit code 2.
void installOutOfMemory();

}  // namespace ostrel
