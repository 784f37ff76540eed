// CString beside a standard text: random operations with positions inside, outside and at the ends.

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>

#include "framework/text/cstring.h"

namespace {

using Text = std::basic_string<TCHAR>;
using lorv::TextView;

// Few letters, so that texts are often found in one another.
Text RandomText(std::mt19937& random, std::size_t most) {
  static constexpr TextView kUnits = _T("aAb,. 梁");
  Text text(random() % (most + 1), _T('a'));
  for (TCHAR& unit : text) unit = kUnits[random() % kUnits.size()];
  return text;
}

int RandomPlace(std::mt19937& random, std::size_t length) {
  return static_cast<int>(random() % (length + 5)) - 2;
}

std::size_t Within(int place, std::size_t length) {
  return std::min(static_cast<std::size_t>(std::max(place, 0)), length);
}

}  // namespace

TEST(CStringModel, PartsAreThoseOfAPlainText) {
  std::mt19937 random(21);
  for (int round = 0; round < 20000; ++round) {
    const Text model = RandomText(random, 12);
    const CString text{TextView(model)};
    const int first = RandomPlace(random, model.size());
    const int count = RandomPlace(random, model.size());
    const std::size_t from = Within(first, model.size());
    const std::size_t wanted = static_cast<std::size_t>(std::max(count, 0));
    ASSERT_EQ(text.Mid(first, count).View(), TextView(model.substr(from, wanted)));
    ASSERT_EQ(text.Mid(first).View(), TextView(model.substr(from)));
    ASSERT_EQ(text.Left(count).View(), TextView(model.substr(0, wanted)));
    ASSERT_EQ(text.Right(count).View(),
              TextView(model.substr(model.size() - std::min(wanted, model.size()))));
    const bool inside = first >= 0 && first < static_cast<int>(model.size());
    ASSERT_EQ(text.GetAt(first), inside ? model[from] : TCHAR{0});
  }
}

TEST(CStringModel, SearchesFindTheFirstAndTheLast) {
  std::mt19937 random(22);
  for (int round = 0; round < 20000; ++round) {
    const Text model = RandomText(random, 12);
    const Text part = RandomText(random, 3);
    const CString text{TextView(model)};
    const int start = RandomPlace(random, model.size());
    const std::size_t from = static_cast<std::size_t>(std::max(start, 0));
    const auto place = [](std::size_t found) { return found == Text::npos ? -1 : static_cast<int>(found); };
    ASSERT_EQ(text.Find(part.c_str(), start), place(model.find(part, from)));
    ASSERT_EQ(text.Find(TCHAR('a'), start), place(model.find(TCHAR('a'), from)));
    ASSERT_EQ(text.ReverseFind(TCHAR('a')), place(model.rfind(TCHAR('a'))));
    ASSERT_EQ(text.FindOneOf(part.c_str()), place(model.find_first_of(part)));
    const std::size_t spans = std::min(model.find_first_not_of(part), model.size());
    ASSERT_EQ(text.SpanIncluding(part.c_str()).View(), TextView(model.substr(0, spans)));
    const std::size_t stops = std::min(model.find_first_of(part), model.size());
    ASSERT_EQ(text.SpanExcluding(part.c_str()).View(), TextView(model.substr(0, stops)));
  }
}

TEST(CStringModel, ChangesAreThoseOfAPlainText) {
  std::mt19937 random(23);
  for (int round = 0; round < 2000; ++round) {
    Text model = RandomText(random, 12);
    CString text{TextView(model)};
    for (int step = 0; step < 10; ++step) {
      const int place = RandomPlace(random, model.size());
      const std::size_t at = Within(place, model.size());
      const Text piece = RandomText(random, 3);
      switch (random() % 5) {
        case 0:
          ASSERT_EQ(text.Insert(place, piece.c_str()), static_cast<int>(model.size() + piece.size()));
          model.insert(at, piece);
          break;
        case 1: {
          const int count = RandomPlace(random, 4);
          text.Delete(place, count);
          if (at < model.size()) model.erase(at, static_cast<std::size_t>(std::max(count, 0)));
          break;
        }
        case 2:
          ASSERT_EQ(text.Remove(TCHAR('a')),
                    static_cast<int>(std::count(model.begin(), model.end(), TCHAR('a'))));
          std::erase(model, TCHAR('a'));
          break;
        case 3:
          text.Append(piece.c_str(), static_cast<int>(piece.size()));
          model += piece;
          break;
        default:
          text.SetAt(place, TCHAR('b'));
          if (place >= 0 && at < model.size()) model[at] = TCHAR('b');
      }
      ASSERT_EQ(text.View(), TextView(model));
    }
  }
}

TEST(CStringModel, ReplacingCountsWhatItFinds) {
  std::mt19937 random(24);
  for (int round = 0; round < 20000; ++round) {
    const Text model = RandomText(random, 12);
    const Text old = RandomText(random, 2);
    const Text fresh = RandomText(random, 3);
    CString text{TextView(model)};
    Text expected;
    int count = 0;
    for (std::size_t at = 0; at < model.size();) {
      if (!old.empty() && model.compare(at, old.size(), old) == 0) {
        expected += fresh;
        at += old.size();
        ++count;
      } else {
        expected += model[at++];
      }
    }
    ASSERT_EQ(text.Replace(old.c_str(), fresh.c_str()), count);
    ASSERT_EQ(text.View(), TextView(expected));
  }
}

TEST(CStringModel, TokensAreThePiecesBetweenSeparators) {
  std::mt19937 random(25);
  for (int round = 0; round < 5000; ++round) {
    const Text model = RandomText(random, 12);
    const CString text{TextView(model)};
    Text joined;
    int at = 0;
    for (int guard = 0; at >= 0; ++guard) {
      ASSERT_LE(guard, 20);
      const CString token = text.Tokenize(_T(",. "), at);
      ASSERT_EQ(token.FindOneOf(_T(",. ")), -1);
      if (at >= 0) {
        ASSERT_FALSE(token.IsEmpty());
      }
      joined += token.View();
    }
    Text expected = model;
    std::erase_if(expected, [](TCHAR c) { return c == ',' || c == '.' || c == ' '; });
    ASSERT_EQ(joined, expected);
  }
}

TEST(CStringModel, TrimmedEndsHoldNoneOfTheSet) {
  std::mt19937 random(26);
  for (int round = 0; round < 10000; ++round) {
    const Text model = RandomText(random, 12);
    const Text set = RandomText(random, 3);
    CString both{TextView(model)};
    both.TrimLeft(set.c_str()).TrimRight(set.c_str());
    const std::size_t first = std::min(model.find_first_not_of(set), model.size());
    const std::size_t last = model.find_last_not_of(set);
    const Text expected = last == Text::npos ? Text() : model.substr(first, last + 1 - first);
    ASSERT_EQ(both.View(), TextView(expected));
  }
}
