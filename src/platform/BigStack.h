#pragma once

#include <functional>

namespace FTS {

/// Runs `work` on a stack sized for deep models and returns when it has ended. Walks over trees are
/// recursive, and a chain of components makes a tree as deep as the chain is long.
///
/// 64 GiB of address space are set aside, or the largest half, quarter... of that which the system
/// grants; memory is used only as far as the walks reach. An exception leaves through this call
/// as if `work` had been called directly. A call from within `work` just runs its own work. If no
/// stack can be had at all, the work runs on the caller's.
void RunOnBigStack(const std::function<void()>& work);

}  // namespace FTS
