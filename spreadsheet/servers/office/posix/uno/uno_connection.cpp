#include "spreadsheet/servers/office/posix/uno/uno_connection.h"

#include <cppuhelper/bootstrap.hxx>
#include <rtl/bootstrap.hxx>

#include <com/sun/star/bridge/UnoUrlResolver.hpp>
#include <com/sun/star/connection/NoConnectException.hpp>
#include <com/sun/star/frame/Desktop.hpp>
#include <com/sun/star/lang/DisposedException.hpp>
#include <system_error>
#include <thread>

#include "spreadsheet/servers/office/posix/uno/file_url.h"
#include "spreadsheet/servers/office/posix/uno/uno_text.h"

// How an office is started and ended. A fresh profile makes it end once with a status of its own, which asks
// for another start; whatever else happens is reported within a limit.

namespace lorv::office {
namespace {

namespace uno = com::sun::star::uno;
using com::sun::star::bridge::UnoUrlResolver;
using com::sun::star::bridge::XUnoUrlResolver;

constexpr int kStartAgain = 81;
constexpr auto kBetweenTries = std::chrono::milliseconds(25);
constexpr auto kTimeToEnd = std::chrono::seconds(5);

// Of this process. The types of the office must be known before the first of its objects comes: calls to
// what is unknown end the process.
const uno::Reference<XUnoUrlResolver>& Resolver() {
  static const uno::Reference<XUnoUrlResolver> resolver = [] {
    rtl::Bootstrap::set(ToUno("URE_MORE_TYPES"),
                        ToUno((FileUrl(LORV_OFFICE_PROGRAM) + "/types/offapi.rdb").c_str()));
    return UnoUrlResolver::create(cppu::defaultBootstrap_InitialComponentContext());
  }();
  return resolver;
}

[[noreturn]] void RefuseStart(const std::string& why) {
  throw OfficeFault{true, Text(why.begin(), why.end())};
}

}  // namespace

UnoConnection::UnoConnection(const OfficeStart& start) try
    : process_(LORV_OFFICE_PROGRAM "/soffice.bin"),
      watch_(std::chrono::seconds(start.call_seconds), [this] { process_.Kill(); }) {
  Connect(std::chrono::steady_clock::now() + std::chrono::seconds(start.start_seconds));
} catch (const std::system_error& failure) {
  RefuseStart(failure.what());
} catch (const uno::Exception& raised) {
  throw OfficeFault{true, FromUno(raised.Message)};
}

UnoConnection::~UnoConnection() {
  try {
    const Scope scope(watch_);
    if (desktop_.is()) desktop_->terminate();
  } catch (const uno::Exception&) {  // NOLINT(bugprone-empty-catch): it ends anyway, by the process
  }
  // The last references write into the pipe as well, which may be gone by now.
  const PipeSignalHeld held;
  desktop_.clear();
  context_.clear();
  process_.WaitForEnd(kTimeToEnd);
}

bool UnoConnection::Resolve() {
  const Scope scope(watch_);
  const std::string address = "uno:pipe,name=" + process_.PipeName() + ";urp;StarOffice.ComponentContext";
  try {
    context_.set(Resolver()->resolve(ToUno(address.c_str())), uno::UNO_QUERY_THROW);
    desktop_ = com::sun::star::frame::Desktop::create(context_);
    return true;
  } catch (const com::sun::star::connection::NoConnectException&) {
    return false;
  } catch (const com::sun::star::lang::DisposedException&) {
    // It has ended between two answers, as it does when it asks for another start.
    return false;
  }
}

void UnoConnection::Connect(std::chrono::steady_clock::time_point end) {
  process_.Start();
  while (!Resolve()) {
    if (std::chrono::steady_clock::now() >= end) RefuseStart("the office does not answer");
    const std::optional<int> ended = process_.Ended();
    if (ended == kStartAgain) {
      process_.Start();
    } else if (ended) {
      RefuseStart("the office has ended with status " + std::to_string(*ended));
    }
    std::this_thread::sleep_for(kBetweenTries);
  }
  // Now, while it runs: an office that is killed cannot say what it leaves behind.
  process_.NoteSockets();
}

bool UnoConnection::Answers() {
  if (process_.Ended()) return false;
  // A process may stand and have lost its end of the pipe.
  try {
    desktop_->getComponents();
    return true;
  } catch (const uno::Exception&) {
    return false;
  }
}

void UnoConnection::Refuse(const uno::Exception& raised) {
  // The same failure stands for an office that is gone and for a workbook that was closed.
  if (!Answers()) throw OfficeFault{true, FromUno(raised.Message)};
  throw OfficeFault{false, FromUno(raised.Message)};
}

}  // namespace lorv::office
