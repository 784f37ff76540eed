#include <gtest/gtest.h>

#include <vector>

#include "grid/CBcgTrueDbGridCtrl.h"

// The fields of the suite's grid are private, and their order is fixed all the same. An explicit
// instantiation may name private members: that is how this test reaches them.

namespace {

template <class Tag, auto member>
struct Opens {
  friend auto FieldOf(Tag /*tag*/) { return member; }
};

}  // namespace

#define LORV_OPEN(field)                                          \
  namespace {                                                     \
  struct Tag_##field {                                            \
    friend auto FieldOf(Tag_##field tag);                         \
  };                                                              \
  template struct Opens<Tag_##field, &CBCGPBasicGridCtrl::field>; \
  }

LORV_OPEN(columns_info_)
LORV_OPEN(languages_)
LORV_OPEN(adjusted_row_height_)
LORV_OPEN(shortcut_)
LORV_OPEN(no_shortcut_)
LORV_OPEN(return_style_)
LORV_OPEN(tab_style_)
LORV_OPEN(return_adds_row_)
LORV_OPEN(multi_line_header_)
LORV_OPEN(keep_selection_)
LORV_OPEN(bold_names_)
LORV_OPEN(tree_)
LORV_OPEN(selected_row_colour_)
LORV_OPEN(click_mask_)
LORV_OPEN(adjusting_row_height_)
LORV_OPEN(adjust_widths_)
LORV_OPEN(best_fit_column_)
LORV_OPEN(list_always_menu_)
LORV_OPEN(hidden_rows_)
LORV_OPEN(drag_fill_)
LORV_OPEN(drag_fill_running_)

namespace {

template <class... Tags>
std::vector<const void*> Places(const CBCGPBasicGridCtrl& grid, Tags... tags) {
  return {static_cast<const void*>(&(grid.*FieldOf(tags)))...};
}

}  // namespace

TEST(BasicFields, StandInTheirOrder) {
  const CBCGPBasicGridCtrl grid;
  const std::vector<const void*> places =
      Places(grid, Tag_columns_info_{}, Tag_languages_{}, Tag_adjusted_row_height_{}, Tag_shortcut_{},
             Tag_no_shortcut_{}, Tag_return_style_{}, Tag_tab_style_{}, Tag_return_adds_row_{},
             Tag_multi_line_header_{}, Tag_keep_selection_{}, Tag_bold_names_{}, Tag_tree_{},
             Tag_selected_row_colour_{}, Tag_click_mask_{}, Tag_adjusting_row_height_{}, Tag_adjust_widths_{},
             Tag_best_fit_column_{}, Tag_list_always_menu_{}, Tag_hidden_rows_{}, Tag_drag_fill_{},
             Tag_drag_fill_running_{});
  for (std::size_t i = 1; i < places.size(); ++i) EXPECT_LT(places[i - 1], places[i]) << "field " << i;
}

TEST(BasicFields, BeginAsTheSuiteExpects) {
  const CBCGPBasicGridCtrl grid;
  EXPECT_EQ((grid.*FieldOf(Tag_languages_{})).GetCount(), 0);
  EXPECT_EQ(grid.*FieldOf(Tag_adjusted_row_height_{}), 0);
  EXPECT_FALSE(grid.*FieldOf(Tag_shortcut_{}));
  EXPECT_EQ((grid.*FieldOf(Tag_no_shortcut_{})).GetSize(), 0);
  EXPECT_EQ(grid.*FieldOf(Tag_return_style_{}), emReturnDown);
  EXPECT_EQ(grid.*FieldOf(Tag_tab_style_{}), emReturnRight);
  EXPECT_FALSE(grid.*FieldOf(Tag_return_adds_row_{}));
  EXPECT_FALSE(grid.*FieldOf(Tag_multi_line_header_{}));
  EXPECT_FALSE(grid.*FieldOf(Tag_keep_selection_{}));
  EXPECT_TRUE(grid.*FieldOf(Tag_bold_names_{}));
  EXPECT_FALSE(grid.*FieldOf(Tag_tree_{}));
  EXPECT_EQ(grid.*FieldOf(Tag_selected_row_colour_{}), 0xFFFFFFFF);
  EXPECT_FALSE((grid.*FieldOf(Tag_click_mask_{})).Has(0));
  EXPECT_FALSE(grid.*FieldOf(Tag_adjusting_row_height_{}));
  EXPECT_FALSE(grid.*FieldOf(Tag_adjust_widths_{}));
  const short best_fit = grid.*FieldOf(Tag_best_fit_column_{});
  EXPECT_EQ(static_cast<unsigned short>(best_fit), 65535);
  EXPECT_FALSE(grid.*FieldOf(Tag_drag_fill_{}));
  EXPECT_FALSE(grid.*FieldOf(Tag_drag_fill_running_{}));
  EXPECT_FALSE(grid.*FieldOf(Tag_list_always_menu_{}));
  EXPECT_EQ((grid.*FieldOf(Tag_hidden_rows_{})).GetCount(), 0);
}
