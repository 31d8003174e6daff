#pragma once

#include "menu_content.h"

namespace quenchly {

/// One action for all that a row can turn into while it stays the same row.
MenuAction standingFor(MenuAction action);

/// Whether both have the same rows, whatever these say: then the one can take the other's place and no row moves.
bool haveSameRows(const MenuContent& one, const MenuContent& other);

/// Whether both list the same targets and set-aside processes: a difference of their rows is then one of actions alone.
bool listTheSame(const MenuContent& one, const MenuContent& other);

/// `next` with the rows of `shown`, for as long as no row may move. A row that is gone keeps its place, and pressing it
/// does nothing; a new one is left out.
MenuContent withRowsOf(const MenuContent& shown, MenuContent next);

}  // namespace quenchly
