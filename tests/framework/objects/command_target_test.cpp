#include "framework/objects/command_target.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "framework/windows/message_map.h"
#include "framework/windows/window.h"

namespace {

using Notes = std::vector<std::string>;

UINT registered = 0;
UINT not_registered = 0;

// Commands, ranges and notifications of a base, some of them taken over by the class below it.
class Ledger : public CCmdTarget {
 public:
  Notes notes;

  void OnOpen() { notes.push_back("open"); }
  void OnSave() { notes.push_back("save"); }
  void OnRange(UINT id) { notes.push_back("range " + std::to_string(id)); }
  void OnHeader(NMHDR* header, LRESULT* result) {
    notes.push_back("header " + std::to_string(header->idFrom));
    *result = 3;
  }
  DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(Ledger, CCmdTarget)
ON_COMMAND(10, OnOpen)
ON_COMMAND(11, OnSave)
ON_COMMAND_RANGE(20, 29, OnRange)
ON_NOTIFY(-5, 40, OnHeader)
END_MESSAGE_MAP()

class Bill : public Ledger {
 public:
  bool asks_events = false;

  void OnOpenBill() { notes.push_back("open bill"); }
  void OnOne() { notes.push_back("one"); }
  BOOL OnEvent(UINT id, AFX_EVENT* event, AFX_CMDHANDLERINFO* info) override {
    if (!asks_events) return Ledger::OnEvent(id, event, info);
    notes.push_back("event " + std::to_string(event->m_dispid));
    return TRUE;
  }
  DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(Bill, Ledger)
ON_COMMAND(10, OnOpenBill)
ON_COMMAND(25, OnOne)
END_MESSAGE_MAP()

int NotificationCode(int code) {
  return static_cast<int>(static_cast<DWORD>(MAKELONG(code, WM_NOTIFY)));
}

}  // namespace

TEST(CommandTarget, TheClassComesBeforeItsBase) {
  Bill bill;
  EXPECT_EQ(bill.OnCmdMsg(10, CN_COMMAND, nullptr, nullptr), TRUE);
  EXPECT_EQ(bill.OnCmdMsg(11, CN_COMMAND, nullptr, nullptr), TRUE);
  EXPECT_EQ(bill.notes, (Notes{"open bill", "save"}));
  Ledger ledger;
  ledger.OnCmdMsg(10, CN_COMMAND, nullptr, nullptr);
  EXPECT_EQ(ledger.notes, Notes{"open"});
}

TEST(CommandTarget, RangesHoldBothTheirEnds) {
  Bill bill;
  EXPECT_EQ(bill.OnCmdMsg(19, CN_COMMAND, nullptr, nullptr), FALSE);
  EXPECT_EQ(bill.OnCmdMsg(20, CN_COMMAND, nullptr, nullptr), TRUE);
  EXPECT_EQ(bill.OnCmdMsg(25, CN_COMMAND, nullptr, nullptr), TRUE);
  EXPECT_EQ(bill.OnCmdMsg(29, CN_COMMAND, nullptr, nullptr), TRUE);
  EXPECT_EQ(bill.OnCmdMsg(30, CN_COMMAND, nullptr, nullptr), FALSE);
  EXPECT_EQ(bill.notes, (Notes{"range 20", "one", "range 29"}));
}

TEST(CommandTarget, AskedForTheHandlerItRunsNothing) {
  Bill bill;
  AFX_CMDHANDLERINFO info;
  EXPECT_EQ(bill.OnCmdMsg(10, CN_COMMAND, nullptr, &info), TRUE);
  EXPECT_EQ(info.pTarget, &bill);
  AFX_CMDHANDLERINFO none;
  EXPECT_EQ(bill.OnCmdMsg(99, CN_COMMAND, nullptr, &none), FALSE);
  EXPECT_EQ(none.pTarget, nullptr);
  EXPECT_TRUE(bill.notes.empty());
}

TEST(CommandTarget, OtherCodesOfACommandAreOthers) {
  Bill bill;
  EXPECT_EQ(bill.OnCmdMsg(10, EN_CHANGE, nullptr, nullptr), FALSE);
  EXPECT_EQ(bill.OnCmdMsg(10, CN_UPDATE_COMMAND_UI, nullptr, nullptr), FALSE);
  EXPECT_TRUE(bill.notes.empty());
}

TEST(CommandTarget, NotificationsGoByTheCodeOfTheirHeader) {
  Bill bill;
  NMHDR header = {};
  header.idFrom = 40;
  header.code = static_cast<UINT>(-5);
  EXPECT_EQ(bill.OnCmdMsg(40, NotificationCode(-5), &header, nullptr), TRUE);
  EXPECT_EQ(bill.notes, Notes{"header 40"});
  header.code = static_cast<UINT>(-6);
  EXPECT_EQ(bill.OnCmdMsg(40, NotificationCode(-6), &header, nullptr), FALSE);
  header.code = static_cast<UINT>(-5);
  EXPECT_EQ(bill.OnCmdMsg(41, NotificationCode(-5), &header, nullptr), FALSE);
}

TEST(CommandTarget, EventsAreForWhoeverTakesThem) {
  Bill bill;
  AFX_EVENT event;
  event.m_dispid = 7;
  EXPECT_EQ(bill.OnCmdMsg(1, CN_EVENT, &event, nullptr), FALSE);
  bill.asks_events = true;
  EXPECT_EQ(bill.OnCmdMsg(1, CN_EVENT, &event, nullptr), TRUE);
  EXPECT_EQ(bill.notes, Notes{"event 7"});
}

TEST(CommandTarget, RegisteredMessagesAreThoseOfTheirVariable) {
  const auto nothing = [](CCmdTarget& /*target*/, lorv::HandlerCall& /*call*/) {};
  const AFX_MSGMAP_ENTRY entries[] = {{0, 0, 0, 0, &not_registered, nothing},
                                      {0, 0, 0, 0, &registered, nothing},
                                      {0, 0, 0, 0, nullptr, nullptr}};
  const AFX_MSGMAP map = {nullptr, entries};
  registered = 0xC005;
  EXPECT_EQ(lorv::FindEntry(&map, 0xC005, 0, 0), &entries[1]);
  EXPECT_EQ(lorv::FindEntry(&map, 0xC006, 0, 0), nullptr);
  // A variable that nobody has set yet fits no message, not even that of its value.
  EXPECT_EQ(lorv::FindEntry(&map, 0, 0, 0), nullptr);
  EXPECT_EQ(lorv::FindEntry(nullptr, 0xC005, 0, 0), nullptr);
}
