#pragma once

// The suite's grids, with the cells and rows that they are made of.

#include "grid/autorow/true_db_grid_ex.h"
#include "grid/basic/basic_grid.h"
#include "grid/bridge/true_db_grid.h"
#include "grid/buttons/menu_button_ex.h"
#include "grid/items/button_item.h"
#include "grid/items/check_item_ex.h"
#include "grid/items/color_item_ex.h"
#include "grid/items/multi_line_row.h"
#include "grid/items/presentation_item.h"
#include "grid/items/read_only_item.h"
