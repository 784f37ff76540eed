#pragma once

#include <memory>
#include <vector>

#include "spreadsheet/servers/office/office_port.h"

namespace lorv::test {

// An office that outlives the exchange it is lent to: what was opened through it is closed in the end.
class LentOffice : public office::OfficeBridge {
 public:
  explicit LentOffice(office::OfficeBridge& office) : office_(office) {}
  LentOffice(const LentOffice&) = delete;
  LentOffice& operator=(const LentOffice&) = delete;
  ~LentOffice() override {
    for (const auto& book : books_) {
      try {
        book->Close();
      } catch (const office::OfficeFault&) {  // NOLINT(bugprone-empty-catch): the exchange has closed it
      }
    }
  }

  std::shared_ptr<office::OfficeBook> NewBook() override { return Keep(office_.NewBook()); }
  std::shared_ptr<office::OfficeBook> OpenBook(const office::Text& path, bool as_template) override {
    return Keep(office_.OpenBook(path, as_template));
  }
  long ProcessId() override { return office_.ProcessId(); }

 private:
  std::shared_ptr<office::OfficeBook> Keep(std::shared_ptr<office::OfficeBook> book) {
    books_.push_back(book);
    return book;
  }

  office::OfficeBridge& office_;
  std::vector<std::shared_ptr<office::OfficeBook>> books_;
};

}  // namespace lorv::test
