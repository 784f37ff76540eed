#include <QDialog>
#include <QDrag>
#include <QMenu>
#include <QTimer>
#include <stdexcept>

#include "framework/ports/menu_model.h"
#include "platform/ports/desktop_services.h"
#include "tests/platform/qt/qt_fixture.h"

// What handlers do while a loop of the widget set runs within a call of ours: they end the program, throw,
// end the window that the loop belongs to, or begin another.

namespace lorv::test {
namespace {

struct Loop {
  const char* name;
  std::function<int()> run;
  int refused;  // what it gives when nothing was chosen
};

class QtLoops : public QtTest {
 protected:
  QtLoops() {
    dragged_.SetText(_T("C30"));
    top.on_message = [this](UINT message, WPARAM, LPARAM, LRESULT&) {
      const auto work = message == WM_APP ? std::exchange(next_, nullptr) : nullptr;
      if (work) work();
      return work != nullptr;
    };
  }
  ~QtLoops() override { top.on_message = nullptr; }

  std::vector<Loop> All() {
    MenuModel menu;
    menu.entries.push_back({MF_STRING, 10, _T("One"), nullptr});
    MenuModel columns = menu;
    columns.entries.push_back({MF_STRING | MF_MENUBARBREAK, 12, _T("Two"), nullptr});
    const auto popup = [this](MenuModel model) {
      return [this, model] { return static_cast<int>(desktop_->Popup(model, {120, 120}, 0, top.window)); };
    };
    constexpr DWORD kPlain = kPrintNoPages | kPrintNoSelection;
    const MessageRequest question{_T("x"), _T("y"), kButtonsYesNo};
    std::vector<Loop> all = {
        {"menu", popup(menu), 0},
        {"columns", popup(columns), 0},
        {"message", [question] { return ServicesOfDesktop()->ShowMessage(question); }, kAnswerCancel},
        {"printer", [this] { return ServicesOfDesktop()->AskPrinter(top.window, kPlain) == nullptr ? 0 : 1; },
         0}};
    // Without a window system there is no drag: it ends as it begins.
    if (QGuiApplication::platformName() != QStringLiteral("offscreen"))
      all.push_back({"drag", [this] { return static_cast<int>(desktop_->Drag(dragged_, DROPEFFECT_COPY)); },
                     DROPEFFECT_NONE});
    return all;
  }

  // The next posted message does it, under whatever loop runs by then.
  void Next(std::function<void()> work) {
    next_ = std::move(work);
    desktop_->Post(top.window, WM_APP, 0, 0);
  }
  static void CloseAsUser() {
    if (QWidget* const popup = QApplication::activePopupWidget()) popup->close();
    if (auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget())) dialog->reject();
    if (QGuiApplication::platformName() != QStringLiteral("offscreen")) QDrag::cancel();
  }
  // The user gives up what is still there after that time.
  class User {
   public:
    explicit User(int after) {
      QObject::connect(&timer_, &QTimer::timeout, [this] {
        acted_ = true;
        CloseAsUser();
      });
      timer_.start(after);
    }
    bool Acted() const { return acted_; }

   private:
    QTimer timer_;
    bool acted_ = false;
  };
  static constexpr int kSoon = 60;
  static constexpr int kHangs = 20000;

 private:
  std::function<void()> next_;
  TransferData dragged_;
};

TEST_F(QtLoops, TheEndOfTheProgramClosesThemAndComesToTheLoopAround) {
  int code = 20;
  for (const Loop& loop : All()) {
    const User user(kHangs);
    Next([&] { desktop_->Post(nullptr, WM_QUIT, static_cast<WPARAM>(++code), 0); });
    EXPECT_EQ(loop.run(), loop.refused) << loop.name;
    EXPECT_FALSE(user.Acted()) << loop.name;
    EXPECT_FALSE(desktop_->MenuUp());
    EXPECT_EQ(desktop_->QuitCode(), code) << loop.name;
    // The program's own loop comes upon it, once.
    bool ended = false;
    for (int i = 0; i < 20 && !ended; ++i) ended = !desktop_->Pump(true);
    EXPECT_TRUE(ended) << loop.name;
    for (int i = 0; i < 5; ++i) {
      desktop_->Post(top.window, WM_USER, 0, 0);
      EXPECT_TRUE(desktop_->Pump(true)) << loop.name;
    }
  }
}

TEST_F(QtLoops, TheLoopOfTheHostEndsWithTheCodeAtOnce) {
  int code = 40;
  for (const Loop& loop : All()) {
    const User user(kHangs);
    int given = -1;
    QTimer::singleShot(0, [&] {
      Next([&] { desktop_->Post(nullptr, WM_QUIT, static_cast<WPARAM>(++code), 0); });
      given = loop.run();
    });
    EXPECT_EQ(QApplication::exec(), code) << loop.name;
    EXPECT_EQ(given, loop.refused) << loop.name;
    EXPECT_FALSE(user.Acted()) << loop.name;
  }
}

TEST_F(QtLoops, WhoGoesOnHasThemAsEver) {
  for (const Loop& loop : All()) {
    Next([&] { desktop_->Post(nullptr, WM_QUIT, 3, 0); });
    loop.run();
    Settle();
    Settle();
    const User user(kSoon);
    EXPECT_EQ(loop.run(), loop.refused) << loop.name;
    EXPECT_TRUE(user.Acted()) << loop.name << " closed by itself";
  }
}

TEST_F(QtLoops, WhatAHandlerThrowsReachesTheCaller) {
  for (const Loop& loop : All()) {
    const User user(kSoon);
    Next([] { throw std::runtime_error("handler"); });
    EXPECT_THROW(loop.run(), std::runtime_error) << loop.name;
    EXPECT_FALSE(desktop_->MenuUp());
    EXPECT_EQ(loop.run(), loop.refused) << loop.name << ": nothing of the first one is left";
  }
}

TEST_F(QtLoops, TheWindowMayEndUnderThem) {
  for (std::size_t i = 0; i < All().size(); ++i) {
    Loop loop = All()[i];
    const User user(kSoon);
    Next([&] { desktop_->Find(top.window)->Destroy(); });
    EXPECT_EQ(loop.run(), loop.refused) << loop.name;
    EXPECT_EQ(desktop_->Find(top.window), nullptr) << loop.name;
    WindowRequest request;
    request.kind = WindowKind::Top;
    request.style = WS_OVERLAPPEDWINDOW | WS_VISIBLE;
    request.place = {100, 100, 500, 400};
    top.window = Make(request, &top);
    Settle();
  }
}

TEST_F(QtLoops, OneMayRunWithinAnother) {
  for (const Loop& outer : All())
    for (const Loop& inner : All()) {
      const User user(kSoon);
      bool ran = false;
      Next([&] {
        EXPECT_EQ(inner.run(), inner.refused) << inner.name << " in " << outer.name;
        ran = true;
      });
      EXPECT_EQ(outer.run(), outer.refused) << outer.name;
      EXPECT_TRUE(ran) << inner.name << " in " << outer.name;
      EXPECT_FALSE(desktop_->MenuUp());
    }
}

TEST_F(QtLoops, TheEndOfTheProgramEndsTheDialogAroundThem) {
  int code = 60;
  for (const Loop& loop : All()) {
    Witness dialog;
    WindowRequest request;
    request.kind = WindowKind::Dialog;
    request.style = WS_CAPTION | WS_VISIBLE;
    request.place = {0, 0, 200, 100};
    request.parent = top.window;
    const HWND window = Make(request, &dialog);
    const User user(kHangs);
    bool gave_up = false;
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, [&] {
      gave_up = true;
      desktop_->EndModal(window);
    });
    watch.start(kHangs);
    Next([&] {
      Next([&] { desktop_->Post(nullptr, WM_QUIT, static_cast<WPARAM>(++code), 0); });
      EXPECT_EQ(loop.run(), loop.refused) << loop.name;
    });
    desktop_->RunModal(window);
    EXPECT_FALSE(user.Acted() || gave_up) << loop.name;
    EXPECT_EQ(desktop_->QuitCode(), code) << loop.name;
    if (const auto peer = desktop_->Find(window)) peer->Destroy();
    Settle();
    Settle();
  }
}

TEST_F(QtLoops, TheEndOfTheProgramClosesOnesWithinOthers) {
  for (const Loop& outer : All()) {
    const User user(kHangs);
    Next([&] {
      Next([&] { desktop_->Post(nullptr, WM_QUIT, 77, 0); });
      EXPECT_EQ(All()[2].run(), kAnswerCancel);
    });
    EXPECT_EQ(outer.run(), outer.refused) << outer.name;
    EXPECT_FALSE(user.Acted()) << outer.name;
    EXPECT_EQ(desktop_->QuitCode(), 77);
    Settle();
    Settle();
  }
}

}  // namespace
}  // namespace lorv::test
