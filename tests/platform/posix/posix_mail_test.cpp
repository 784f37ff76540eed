#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

#include "platform/headless/desktop/headless_desktop.h"
#include "platform/ports/code_page.h"
#include "platform/ports/mail.h"
#include "platform/ports/printing.h"
#include "platform/ports/suite.h"
#include "platform/posix/services/start_program.h"
#include "tests/platform/posix/scoped_variable.h"
#include "tests/support/data.h"
#include "tests/support/print.h"

namespace lorv {
namespace {

namespace fs = std::filesystem;
using test::ScopedVariable;
using test::Utf8;

// A folder of programs in which a script plays the mail program: it writes down its words and sends nothing.
class PosixMail : public testing::Test {
 protected:
  PosixMail() : path_("PATH", folder_.Path().string() + ":/usr/bin:/bin") {}

  void Install() {
    const fs::path program = folder_.Path() / "xdg-email";
    const std::string words = (folder_.Path() / "words").string();
    ASSERT_EQ(mkfifo(words.c_str(), S_IRUSR | S_IWUSR), 0);
    test::WriteBytes(program,
                     "#!/bin/sh\nfor word in \"$@\"; do printf '%s|' \"$word\"; done > '" + words + "'\n");
    fs::permissions(program, fs::perms::owner_all);
  }
  // What the program was given. It was left to itself: the pipe waits for it.
  std::string Words() const { return test::ReadBytes(folder_.Path() / "words"); }

  test::ScratchFolder folder_;
  ScopedVariable path_;
};

TEST_F(PosixMail, IsThereWithTheDesktopsMailProgram) {
  const ScopedVariable nowhere("PATH", folder_.Path().string());
  EXPECT_FALSE(NativeMail().Installed());
  EXPECT_EQ(NativeMail().Load(), nullptr);
  Install();
  EXPECT_TRUE(NativeMail().Installed());
}

TEST_F(PosixMail, OpensTheProgramWithTheMessage) {
  Install();
  const auto library = NativeMail().Load();
  ASSERT_NE(library, nullptr);
  EXPECT_TRUE(library->CanSend());
  const MailMessage message = {kMailTo, "Name", "SMTP:name@place.example", "A subject",
                               SuiteCodePage().ToNarrow(_T("墙 $(x) \"q\"\r\n'-"))};
  EXPECT_EQ(library->Send(nullptr, message, kMailLogonWindow | kMailMessageWindow), kMailSent);
  EXPECT_EQ(Words(), "--utf8|--subject|A subject|--body|墙 $(x) \"q\"\r\n'-|name@place.example|");
}

TEST_F(PosixMail, AProgramThatWentIsAFailure) {
  Install();
  const auto library = NativeMail().Load();
  const ScopedVariable nowhere("PATH", "/no/such/folder");
  EXPECT_EQ(library->Send(nullptr, {}, 0), kMailFailed);
}

TEST(StartProgram, IsFoundAsAShellFindsIt) {
  EXPECT_TRUE(HasProgram("sh"));
  EXPECT_FALSE(HasProgram("no-such-program-here"));
  EXPECT_FALSE(HasProgram("no such; true"));
  EXPECT_FALSE(StartProgram({"no-such-program-here", "x"}));
}

TEST(PosixPrinting, NobodyIsAskedWithoutWindows) {
  HeadlessDesktop desktop;
  const ScopedDesktop scope(desktop);
  EXPECT_EQ(NativePrinting().Ask(nullptr, kPrintNoPages), nullptr);
}

TEST(PosixSuite, SupportAddressCanBeNamed) {
  EXPECT_EQ(Utf8(NativeSuite().SupportAddress()), "SMTP:support@suite.example");
  const ScopedVariable named("COMM_LORV_SUPPORT", "SMTP:算量@place.example");
  EXPECT_EQ(Utf8(NativeSuite().SupportAddress()), "SMTP:算量@place.example");
}

}  // namespace
}  // namespace lorv
