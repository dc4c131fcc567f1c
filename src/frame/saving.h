#pragma once

#include "frame/columns.h"

namespace ombrix {

/// Brings a master to the row that a save writes: a new one with its key columns, or the one that
/// stands, whose lines `delete_lines` takes away.
template <class D>
void begin_save(Recordset& master, std::span<const Column<D>> key_columns, D& document,
                auto delete_lines) {
  if (!master.IsEOF()) {
    delete_lines();
    return;
  }
  master.AddNew();
  write_columns(key_columns, document, master);
}

}  // namespace ombrix
