#include <xcb/xtest.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>

// Moves the mouse of an X server: "move X Y", "down", "up", in the order of the words. The end of the program
// says that the server has done it.

namespace {

void Fake(xcb_connection_t* server, std::uint8_t type, std::uint8_t button, int x, int y) {
  const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(server)).data->root;
  xcb_test_fake_input(server, type, button, XCB_CURRENT_TIME, root, static_cast<std::int16_t>(x),
                      static_cast<std::int16_t>(y), 0);
}

}  // namespace

int main(int count, char** words) {
  xcb_connection_t* const server = xcb_connect(nullptr, nullptr);
  if (xcb_connection_has_error(server) != 0) return 1;
  for (int i = 1; i < count; ++i) {
    if (std::strcmp(words[i], "down") == 0) Fake(server, XCB_BUTTON_PRESS, 1, 0, 0);
    if (std::strcmp(words[i], "up") == 0) Fake(server, XCB_BUTTON_RELEASE, 1, 0, 0);
    if (std::strcmp(words[i], "move") == 0 && i + 2 < count) {
      Fake(server, XCB_MOTION_NOTIFY, 0, std::atoi(words[i + 1]), std::atoi(words[i + 2]));
      i += 2;
    }
  }
  std::free(xcb_get_input_focus_reply(server, xcb_get_input_focus(server), nullptr));
  xcb_disconnect(server);
  return 0;
}
