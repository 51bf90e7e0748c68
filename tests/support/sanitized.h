#pragma once

/// Whether sanitizers are built in: these reserve more address space than any limit, and take time.
constexpr bool isSanitized = OSTREL_SANITIZED;
