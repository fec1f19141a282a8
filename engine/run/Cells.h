// Cells of numbers, which a host may read and write on its own thread.
#pragma once

#include "engine/code/Value.h"

namespace korvel {

inline Value LoadCell(const Fixed* cell) {
  return __atomic_load_n(cell, __ATOMIC_RELAXED);
}
inline void StoreCell(Fixed* cell, Value value) {
  __atomic_store_n(cell, static_cast<Fixed>(value), __ATOMIC_RELAXED);
}

}  // namespace korvel
