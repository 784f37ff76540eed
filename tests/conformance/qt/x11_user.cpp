#include <gtest/gtest.h>
#include <xcb/xtest.h>

#include <QAbstractNativeEventFilter>
#include <QGuiApplication>
#include <QWindow>
#include <cstdlib>
#include <map>
#include <set>

#include "framework/native/window_types.h"
#include "tests/conformance/qt/qt_user.h"

namespace lorv_test {
namespace {

struct FreeReply {
  void operator()(void* reply) const { std::free(reply); }
};
template <class Reply>
using ReplyOf = std::unique_ptr<Reply, FreeReply>;

struct Disconnect {
  void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
};

xcb_window_t RootOf(xcb_connection_t* connection) {
  return xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
}

xcb_window_t MakeWindow(xcb_connection_t* connection) {
  const xcb_window_t window = xcb_generate_id(connection);
  const std::uint32_t unmanaged = 1;
  xcb_create_window(connection, XCB_COPY_FROM_PARENT, window, RootOf(connection), 700, 700, 50, 50, 0,
                    XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT,
                    &unmanaged);
  return window;
}

// Names of keys as the server knows them.
const std::map<int, xcb_keysym_t> kKeys = {
    {VK_RETURN, 0xFF0D}, {VK_TAB, 0xFF09},   {VK_ESCAPE, 0xFF1B},  {VK_LEFT, 0xFF51}, {VK_RIGHT, 0xFF53},
    {VK_UP, 0xFF52},     {VK_DOWN, 0xFF54},  {VK_HOME, 0xFF50},    {VK_END, 0xFF57},  {VK_DELETE, 0xFFFF},
    {VK_BACK, 0xFF08},   {VK_SHIFT, 0xFFE1}, {VK_CONTROL, 0xFFE3}, {VK_MENU, 0xFFE9}, {VK_F2, 0xFFBF},
    {VK_F4, 0xFFC1},     {VK_SPACE, 0x20},   {VK_PRIOR, 0xFF55},   {VK_NEXT, 0xFF56}};

// All goes over Qt's own connection, so that the server handles it in the order of the calls.
class X11User : public QtUser, public QAbstractNativeEventFilter {
 public:
  X11User()
      : server_(qGuiApp->nativeInterface<QNativeInterface::QX11Application>()->connection()),
        mark_(MakeWindow(server_)) {
    ReadKeys();
    qGuiApp->installNativeEventFilter(this);
  }
  ~X11User() override {
    qGuiApp->removeNativeEventFilter(this);
    xcb_destroy_window(server_, mark_);
    xcb_flush(server_);
  }

  void Key(int key, bool down) override {
    const auto named = kKeys.find(key);
    const xcb_keysym_t name =
        named != kKeys.end() ? named->second : static_cast<xcb_keysym_t>(std::tolower(key));
    const std::uint8_t code = codes_[name];
    ASSERT_NE(code, 0) << key;
    // A key that has brought a dialog up is still held: who presses it again lets go first.
    if (down_.count(code) != 0) Fake(XCB_KEY_RELEASE, code, {0, 0});
    down_.erase(code);
    if (!down) return;
    Fake(XCB_KEY_PRESS, code, {0, 0});
    down_.insert(code);
  }
  void MoveMouse(POINT screen) override { Fake(XCB_MOTION_NOTIFY, 0, screen); }
  void Button(bool down) override { Fake(down ? XCB_BUTTON_PRESS : XCB_BUTTON_RELEASE, 1, {0, 0}); }
  void RightButton(bool down) override { Fake(down ? XCB_BUTTON_PRESS : XCB_BUTTON_RELEASE, 3, {0, 0}); }

  void BringOtherProgram() override {
    other_.reset(xcb_connect(nullptr, nullptr));
    const xcb_window_t window = MakeWindow(other_.get());
    xcb_map_window(other_.get(), window);
    xcb_set_input_focus(other_.get(), XCB_INPUT_FOCUS_PARENT, window, XCB_CURRENT_TIME);
    // An answer says that the server has done it.
    const ReplyOf<xcb_get_input_focus_reply_t> focus(
        xcb_get_input_focus_reply(other_.get(), xcb_get_input_focus(other_.get()), nullptr));
    EXPECT_EQ(focus->focus, window);
    // Who asks for the focus later has to have heard of something since: a mark at each of our windows.
    for (const QWindow* const ours : QGuiApplication::topLevelWindows())
      xcb_change_property(other_.get(), XCB_PROP_MODE_REPLACE, static_cast<xcb_window_t>(ours->winId()),
                          XCB_ATOM_CUT_BUFFER0, XCB_ATOM_STRING, 8, 0, nullptr);
    xcb_flush(other_.get());
  }

  // A message to ourselves comes back behind all that the server had to report before.
  bool Arrive() override {
    xcb_client_message_event_t message = {};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = mark_;
    message.type = XCB_ATOM_INTEGER;
    message.data.data32[0] = ++sent_;
    xcb_send_event(server_, 0, mark_, XCB_EVENT_MASK_NO_EVENT, reinterpret_cast<const char*>(&message));
    xcb_flush(server_);
    others_ = 0;
    while (came_back_ != sent_) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    return others_ != 0;
  }

  bool nativeEventFilter(const QByteArray& /*kind*/, void* data, qintptr* /*result*/) override {
    const auto* const event = static_cast<const xcb_generic_event_t*>(data);
    const auto* const message = static_cast<const xcb_client_message_event_t*>(data);
    const bool ours = (event->response_type & 0x7F) == XCB_CLIENT_MESSAGE && message->window == mark_;
    if (ours) came_back_ = message->data.data32[0];
    if (!ours) ++others_;
    return ours;
  }

 private:
  void ReadKeys() {
    const xcb_setup_t* const setup = xcb_get_setup(server_);
    const auto count = static_cast<std::uint8_t>(setup->max_keycode - setup->min_keycode + 1);
    const ReplyOf<xcb_get_keyboard_mapping_reply_t> names(xcb_get_keyboard_mapping_reply(
        server_, xcb_get_keyboard_mapping(server_, setup->min_keycode, count), nullptr));
    const xcb_keysym_t* const name = xcb_get_keyboard_mapping_keysyms(names.get());
    for (int i = 0; i < count; ++i)
      codes_.try_emplace(name[i * names->keysyms_per_keycode],
                         static_cast<std::uint8_t>(setup->min_keycode + i));
  }

  void Fake(std::uint8_t type, std::uint8_t detail, POINT at) {
    xcb_test_fake_input(server_, type, detail, XCB_CURRENT_TIME, RootOf(server_),
                        static_cast<std::int16_t>(at.x), static_cast<std::int16_t>(at.y), 0);
    xcb_flush(server_);
  }

  xcb_connection_t* server_;
  xcb_window_t mark_;
  std::map<xcb_keysym_t, std::uint8_t> codes_;
  std::set<std::uint8_t> down_;
  std::unique_ptr<xcb_connection_t, Disconnect> other_;
  std::uint32_t sent_ = 0;
  std::uint32_t came_back_ = 0;
  int others_ = 0;
};

}  // namespace

std::unique_ptr<QtUser> MakeQtUser() {
  return std::make_unique<X11User>();
}

}  // namespace lorv_test
