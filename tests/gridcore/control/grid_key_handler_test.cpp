#include "gridcore/control/grid_key_handler.h"

#include "tests/gridcore/control/grid_desk.h"

namespace {

// Notes what it is asked, and answers as the test wants.
class Asked : public lorv::GridKeyHandler {
 public:
  Asked(std::string name, std::vector<std::string>& notes) : name_(std::move(name)), notes_(notes) {}
  std::function<bool(const lorv::GridKey&)> answer;

  bool OnGridKey(const lorv::GridKey& key) override {
    std::string held;
    if (key.control) held += "C";
    if (key.shift) held += "S";
    if (key.alt) held += "A";
    if (key.editing) held += "E";
    notes_.push_back(name_ + held + std::to_string(key.key));
    const auto copy = answer;
    return copy && copy(key);
  }

 private:
  std::string name_;
  std::vector<std::string>& notes_;
};

bool Uses(const lorv::GridKey& /*key*/) {
  return true;
}

class GridKeyHandlers : public lorv_test::GridDesk {
 protected:
  GridKeyHandlers()
      : first(std::make_unique<Asked>("a", asked)), second(std::make_unique<Asked>("b", asked)) {
    Fill(3, 3);
    Choose(0, 0);
  }
  void AttachBoth() {
    grid->KeyHandlers().Attach(*first);
    grid->KeyHandlers().Attach(*second);
  }
  std::vector<std::string> TakenAsked() { return std::exchange(asked, {}); }
  std::string Current() const {
    const CBCGPGridItemID at = grid->GetCurSelItemID();
    return std::to_string(at.m_nRow) + "," + std::to_string(at.m_nColumn);
  }

  std::vector<std::string> asked;
  std::unique_ptr<Asked> first;
  std::unique_ptr<Asked> second;
};

using lorv_test::Notes;

}  // namespace

TEST_F(GridKeyHandlers, AreAskedBeforeTheGridTheLastFirst) {
  AttachBoth();
  Key(VK_DOWN);
  EXPECT_EQ(TakenAsked(), (Notes{"b40", "a40"}));
  EXPECT_EQ(Current(), "1,0");
  second->answer = Uses;
  Key(VK_DOWN);
  EXPECT_EQ(TakenAsked(), Notes{"b40"});
  EXPECT_EQ(Current(), "1,0");
}

TEST_F(GridKeyHandlers, AttachOnceAndLeaveByThemselves) {
  AttachBoth();
  grid->KeyHandlers().Attach(*first);
  Key(VK_F5);
  EXPECT_EQ(TakenAsked(), (Notes{"b116", "a116"}));
  second.reset();
  lorv::GridKeyHandlers::Detach(*first);
  lorv::GridKeyHandlers::Detach(*first);
  EXPECT_TRUE(grid->KeyHandlers().IsEmpty());
  Key(VK_DOWN);
  EXPECT_EQ(TakenAsked(), Notes{});
  EXPECT_EQ(Current(), "1,0");
}

TEST_F(GridKeyHandlers, HearWhatIsHeld) {
  AttachBoth();
  first->answer = Uses;
  desktop.PressWith(VK_SHIFT, VK_F2);
  desktop.PressWith(VK_MENU, VK_F2);
  desktop.PressWith(VK_CONTROL, 'Z');
  Run();
  const auto heard = TakenAsked();
  const auto has = [&](const char* what) {
    return std::find(heard.begin(), heard.end(), what) != heard.end();
  };
  EXPECT_TRUE(has("aS113"));
  EXPECT_TRUE(has("aA113"));
  EXPECT_TRUE(has("aC90"));
}

TEST_F(GridKeyHandlers, UseUpTheCharacterWithTheKey) {
  AttachBoth();
  first->answer = [](const lorv::GridKey& key) { return key.key == 'D' || key.key == VK_F5; };
  desktop.Type(_T("d"));
  Run();
  EXPECT_EQ(Editor(), nullptr);
  // A function key types nothing: the character that follows comes from elsewhere, as from an input method.
  Key(VK_F5);
  grid->SendMessage(WM_CHAR, 0x6881, 1);
  ASSERT_NE(Editor(), nullptr);
  EXPECT_EQ(TextOf(*Editor()), CString(_T("梁")));
}

TEST_F(GridKeyHandlers, KeepNoCharacterOfTheNextKey) {
  AttachBoth();
  first->answer = [](const lorv::GridKey& key) { return key.key == 'D'; };
  grid->SendMessage(WM_KEYDOWN, 'D', 1);
  desktop.Type(_T("e"));
  Run();
  ASSERT_NE(Editor(), nullptr);
  EXPECT_EQ(TextOf(*Editor()), CString(_T("e")));
}

TEST_F(GridKeyHandlers, AreAskedForKeysOfAnEditor) {
  AttachBoth();
  Key(VK_F2);
  ASSERT_NE(Editor(), nullptr);
  TakenAsked();
  Key(VK_HOME);
  EXPECT_EQ(TakenAsked(), (Notes{"bE36", "aE36"}));
  first->answer = Uses;
  Key(VK_RETURN);
  EXPECT_NE(Editor(), nullptr);
  first->answer = nullptr;
  Key(VK_RETURN);
  EXPECT_EQ(Editor(), nullptr);
}

TEST_F(GridKeyHandlers, MayCloseTheEditorThatTheKeyWasFor) {
  AttachBoth();
  Key(VK_F2);
  second->answer = [this](const lorv::GridKey& key) {
    if (key.editing) grid->EndEditItem(FALSE);
    return false;
  };
  Key(VK_RETURN);
  EXPECT_EQ(Editor(), nullptr);
  EXPECT_EQ(Current(), "0,0");
}

TEST_F(GridKeyHandlers, MayEndOthersWithinAnAnswer) {
  AttachBoth();
  second->answer = [this](const lorv::GridKey&) {
    first.reset();
    return false;
  };
  Key(VK_DOWN);
  EXPECT_EQ(TakenAsked(), Notes{"b40"});
  EXPECT_EQ(Current(), "1,0");
  // And itself.
  second->answer = [this](const lorv::GridKey&) {
    second.reset();
    return false;
  };
  Key(VK_DOWN);
  EXPECT_EQ(Current(), "2,0");
}

TEST_F(GridKeyHandlers, MayEndTheGridWithinAnAnswer) {
  AttachBoth();
  second->answer = [this](const lorv::GridKey&) {
    grid.reset();
    return false;
  };
  Key(VK_DOWN);
  EXPECT_EQ(TakenAsked(), Notes{"b40"});
  // What outlives its grid can be attached to another one.
  CBCGPGridCtrl other;
  other.KeyHandlers().Attach(*second);
  EXPECT_FALSE(other.KeyHandlers().IsEmpty());
}

TEST_F(GridKeyHandlers, MayEndTheGridWithAnEditorOpen) {
  AttachBoth();
  Key(VK_F2);
  second->answer = [this](const lorv::GridKey&) {
    grid.reset();
    return false;
  };
  Key('X');
  EXPECT_EQ(TakenAsked(), (Notes{"b113", "a113", "bE88"}));
}
