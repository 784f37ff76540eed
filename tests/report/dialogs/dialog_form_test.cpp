#include "report/dialogs/dialog_forms.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/print.h"

namespace lorv {
namespace {

using test::Utf8;

// "kind id x y w h text" of every item; -1 stands for labels' id.
std::vector<std::string> Rows(const DialogTemplate& form) {
  std::vector<std::string> rows;
  for (const DialogItem& item : form.items)
    rows.push_back(std::to_string(item.id == 0xFFFF ? -1 : static_cast<int>(item.id)) + " " +
                   std::to_string(item.x) + " " + std::to_string(item.y) + " " + std::to_string(item.width) +
                   " " + std::to_string(item.height) + " " + Utf8(CString(item.text)));
  return rows;
}

TEST(DialogForm, SizesCaptionsAndFonts) {
  const struct {
    const DialogTemplate& form;
    UINT id;
    std::string caption;
    int width;
    int height;
  } cases[] = {{kFailureForm, 1000, "错误提示", 247, 118},
               {kDescriptionForm, 1001, "附加提示", 235, 126},
               {kFileSelectForm, 1002, "文件选择", 247, 191}};
  for (const auto& c : cases) {
    EXPECT_EQ(c.form.id, c.id);
    EXPECT_EQ(Utf8(CString(c.form.caption)), c.caption);
    EXPECT_EQ(c.form.width, c.width);
    EXPECT_EQ(c.form.height, c.height);
    EXPECT_EQ(Utf8(CString(c.form.font)), "宋体");
    EXPECT_EQ(c.form.points, 9);
  }
}

TEST(DialogForm, ControlsOfTheFailure) {
  EXPECT_EQ(Rows(kFailureForm),
            (std::vector<std::string>{"1002 7 7 233 88 ", "1 76 97 50 14 确定", "1001 133 97 50 14 打印",
                                      "1000 190 97 50 14 发送"}));
  const DialogItem& text = kFailureForm.items[0];
  EXPECT_EQ(text.kind, WindowKind::Edit);
  EXPECT_EQ(text.style & (ES_READONLY | ES_MULTILINE), DWORD{ES_READONLY | ES_MULTILINE});
}

TEST(DialogForm, ControlsOfTheDescription) {
  EXPECT_EQ(Rows(kDescriptionForm),
            (std::vector<std::string>{"-1 7 7 221 10 使用***出错。",
                                      "-1 7 20 221 10 您的热心对我们解决产品的错误非常有好处！",
                                      "-1 7 33 221 10 错误附加描述：", "1003 7 46 221 53 ",
                                      "1 121 105 50 14 确定", "2 178 105 50 14 取消"}));
  EXPECT_EQ(kDescriptionForm.items[3].style & (ES_READONLY | ES_MULTILINE), DWORD{ES_MULTILINE});
}

TEST(DialogForm, ControlsOfTheChoice) {
  EXPECT_EQ(Rows(kFileSelectForm), (std::vector<std::string>{"5002 7 7 233 159 ", "2 133 170 50 14 取 消",
                                                             "1 190 170 50 14 确 定"}));
  EXPECT_EQ(kFileSelectForm.items[0].kind, WindowKind::List);
  EXPECT_EQ(kFileSelectForm.items[0].style & LBS_SORT, 0U);
}

// Nothing hangs over the dialog's edge, and no two controls lie over one another.
TEST(DialogForm, ControlsStandApartWithinTheDialog) {
  for (const DialogTemplate* form : {&kFailureForm, &kDescriptionForm, &kFileSelectForm}) {
    for (const DialogItem& item : form->items) {
      EXPECT_LE(item.x + item.width, form->width);
      EXPECT_LE(item.y + item.height, form->height);
      for (const DialogItem& other : form->items) {
        if (&item == &other) continue;
        const bool apart = item.x + item.width <= other.x || other.x + other.width <= item.x ||
                           item.y + item.height <= other.y || other.y + other.height <= item.y;
        EXPECT_TRUE(apart) << form->id << ": " << item.id << " and " << other.id;
      }
    }
  }
}

}  // namespace
}  // namespace lorv
