#pragma once

#include "grid/commands/grid_command.h"

namespace lorv {

// How a row of the table takes its keys.
enum class KeyPlace : int { kOwn, kGrid, kGridAndEditor };

struct CommandRow {
  LPCTSTR name;
  LPCTSTR keys;
  CommandWhen when;
  KeyPlace place;
  LPCTSTR chinese;
  LPCTSTR english;
};

inline constexpr CommandRow kCommandRows[] = {
    {_T("move"), _T("Left, Right, Up, Down"), CommandWhen::kAlways, KeyPlace::kOwn, _T("移动当前单元格"),
     _T("Move the current cell")},
    {_T("extend"), _T("Shift+Left, Shift+Right, Shift+Up, Shift+Down"), CommandWhen::kCell, KeyPlace::kOwn,
     _T("扩展选区"), _T("Extend the selection")},
    {_T("row_ends"), _T("Home, End"), CommandWhen::kAlways, KeyPlace::kOwn, _T("到行首或行尾"),
     _T("To the first or last column")},
    {_T("table_ends"), _T("Ctrl+Home, Ctrl+End"), CommandWhen::kAlways, KeyPlace::kOwn, _T("到表首或表尾"),
     _T("To the first or last cell")},
    {_T("pages"), _T("PageUp, PageDown"), CommandWhen::kAlways, KeyPlace::kOwn, _T("上下翻页"),
     _T("A page up or down")},
    {_T("next_cell"), _T("Tab, Shift+Tab"), CommandWhen::kAlways, KeyPlace::kOwn, _T("下一个或上一个单元格"),
     _T("The next or former cell")},
    {_T("edit"), _T("F2, Enter"), CommandWhen::kEditableCell, KeyPlace::kOwn, _T("编辑单元格"),
     _T("Edit the cell")},
    {_T("list"), _T("F4"), CommandWhen::kEditableCell, KeyPlace::kOwn, _T("展开编辑中的列表"),
     _T("Open the list of the editor")},
    {_T("select_all"), _T("Ctrl+A"), CommandWhen::kAlways, KeyPlace::kGrid, _T("全选"), _T("Select all")},
    {_T("undo"), _T("Ctrl+Z"), CommandWhen::kAlways, KeyPlace::kGrid, _T("撤销"), _T("Undo")},
    {_T("redo"), _T("Ctrl+Y, Ctrl+Shift+Z"), CommandWhen::kAlways, KeyPlace::kGrid, _T("重做"), _T("Redo")},
    {_T("cut"), _T("Ctrl+X, Shift+Delete"), CommandWhen::kSelection, KeyPlace::kGrid, _T("剪切"), _T("Cut")},
    {_T("copy"), _T("Ctrl+C, Ctrl+Insert"), CommandWhen::kSelection, KeyPlace::kGrid, _T("复制"), _T("Copy")},
    {_T("paste"), _T("Ctrl+V, Shift+Insert"), CommandWhen::kCell, KeyPlace::kGrid, _T("粘贴"), _T("Paste")},
    {_T("clear"), _T("Delete"), CommandWhen::kSelection, KeyPlace::kGrid, _T("清除内容"),
     _T("Clear the cells")},
    {_T("find"), _T("Ctrl+F"), CommandWhen::kAlways, KeyPlace::kGridAndEditor, _T("查找"), _T("Find")},
    {_T("find_next"), _T("F3"), CommandWhen::kAlways, KeyPlace::kGridAndEditor, _T("查找下一个"),
     _T("Find next")},
    {_T("find_previous"), _T("Shift+F3"), CommandWhen::kAlways, KeyPlace::kGridAndEditor, _T("查找上一个"),
     _T("Find previous")},
    {_T("replace"), _T("Ctrl+H"), CommandWhen::kAlways, KeyPlace::kGridAndEditor, _T("替换"), _T("Replace")},
    {_T("insert_row"), _T("Ctrl+Num+"), CommandWhen::kOwnRows, KeyPlace::kGrid, _T("插入行"),
     _T("Insert a row")},
    {_T("delete_rows"), _T("Ctrl+Num-"), CommandWhen::kOwnRows, KeyPlace::kGrid, _T("删除行"),
     _T("Delete the rows")},
    {_T("sort_up"), _T(""), CommandWhen::kOwnRows, KeyPlace::kGrid, _T("升序"), _T("Sort ascending")},
    {_T("sort_down"), _T(""), CommandWhen::kOwnRows, KeyPlace::kGrid, _T("降序"), _T("Sort descending")},
    {_T("filter_bar"), _T("Ctrl+Shift+L"), CommandWhen::kAlways, KeyPlace::kGridAndEditor, _T("筛选栏"),
     _T("Filter bar")},
    {_T("hide_column"), _T("Ctrl+0"), CommandWhen::kCell, KeyPlace::kGrid, _T("隐藏列"),
     _T("Hide the column")},
    {_T("show_columns"), _T("Ctrl+Shift+0"), CommandWhen::kAlways, KeyPlace::kGrid, _T("显示全部列"),
     _T("Show all columns")},
    {_T("copy_widths"), _T(""), CommandWhen::kAlways, KeyPlace::kGrid, _T("复制列宽"),
     _T("Copy the column widths")},
    {_T("freeze_columns"), _T(""), CommandWhen::kCell, KeyPlace::kGrid, _T("冻结至当前列"),
     _T("Freeze the columns up to the current one")},
    {_T("unfreeze_columns"), _T(""), CommandWhen::kAlways, KeyPlace::kGrid, _T("取消冻结列"),
     _T("Unfreeze the columns")},
    {_T("move_column_left"), _T(""), CommandWhen::kCell, KeyPlace::kGrid, _T("列左移"),
     _T("Move the column to the left")},
    {_T("move_column_right"), _T(""), CommandWhen::kCell, KeyPlace::kGrid, _T("列右移"),
     _T("Move the column to the right")},
    {_T("restore_columns"), _T(""), CommandWhen::kAlways, KeyPlace::kGrid, _T("恢复列顺序"),
     _T("Columns in their first order")},
    {_T("zoom_in"), _T("Ctrl+Plus, Ctrl+WheelUp"), CommandWhen::kAlways, KeyPlace::kGridAndEditor, _T("放大"),
     _T("Zoom in")},
    {_T("zoom_out"), _T("Ctrl+Minus, Ctrl+WheelDown"), CommandWhen::kAlways, KeyPlace::kGridAndEditor,
     _T("缩小"), _T("Zoom out")},
    {_T("zoom_reset"), _T("Ctrl+Shift+Plus"), CommandWhen::kAlways, KeyPlace::kGridAndEditor, _T("实际大小"),
     _T("Actual size")},
};

}  // namespace lorv
