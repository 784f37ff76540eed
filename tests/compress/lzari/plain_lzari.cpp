#include "tests/compress/lzari/plain_lzari.h"

#include <utility>

namespace lorv::test {

void PlainLzari::PutBit(int bit) {
  if (bit != 0) put_buffer_ |= put_mask_;
  if ((put_mask_ >>= 1) == 0) {
    out_.push_back(static_cast<char>(put_buffer_));
    put_buffer_ = 0;
    put_mask_ = 128;
  }
}

void PlainLzari::Output(int bit) {
  PutBit(bit);
  for (; shifts_ > 0; --shifts_) PutBit(bit == 0 ? 1 : 0);
}

int PlainLzari::GetBit() {
  if ((get_mask_ >>= 1) == 0) {
    const int past_end = reading_ == Reading::kFile ? 0xFF : 0;
    get_buffer_ = in_position_ < in_.size() ? static_cast<unsigned char>(in_[in_position_]) : past_end;
    ++in_position_;
    get_mask_ = 128;
  }
  return (get_buffer_ & get_mask_) != 0 ? 1 : 0;
}

void PlainLzari::InitTree() {
  for (int i = kWindow + 1; i <= kWindow + 256; ++i) right_[static_cast<std::size_t>(i)] = kNil;
  for (int i = 0; i < kWindow; ++i) parent_[static_cast<std::size_t>(i)] = kNil;
}

// The casts to std::size_t would bury the steps: indexes are ints here as they are in the description.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wsign-conversion"

void PlainLzari::InsertNode(int r) {
  int compared = 1;
  int p = kWindow + 1 + text_[r];
  right_[r] = left_[r] = kNil;
  match_length_ = 0;
  for (;;) {
    int& son = compared >= 0 ? right_[p] : left_[p];
    if (son == kNil) {
      son = r;
      parent_[r] = p;
      return;
    }
    p = son;
    int i = 1;
    for (; i < kLongest; ++i) {
      if ((compared = text_[r + i] - text_[p + i]) != 0) break;
    }
    if (i <= kThreshold) continue;
    const int distance = (r - p) & (kWindow - 1);
    if (i > match_length_) {
      match_position_ = distance;
      match_length_ = i;
      if (i >= kLongest) break;
    } else if (i == match_length_ && distance < match_position_) {
      match_position_ = distance;
    }
  }
  parent_[r] = parent_[p];
  left_[r] = left_[p];
  right_[r] = right_[p];
  parent_[left_[p]] = r;
  parent_[right_[p]] = r;
  if (right_[parent_[p]] == p) {
    right_[parent_[p]] = r;
  } else {
    left_[parent_[p]] = r;
  }
  parent_[p] = kNil;
}

void PlainLzari::DeleteNode(int p) {
  if (parent_[p] == kNil) return;
  int q;
  if (right_[p] == kNil) {
    q = left_[p];
  } else if (left_[p] == kNil) {
    q = right_[p];
  } else {
    q = left_[p];
    if (right_[q] != kNil) {
      while (right_[q] != kNil) q = right_[q];
      right_[parent_[q]] = left_[q];
      parent_[left_[q]] = parent_[q];
      left_[q] = left_[p];
      parent_[left_[p]] = q;
    }
    right_[q] = right_[p];
    parent_[right_[p]] = q;
  }
  parent_[q] = parent_[p];
  if (right_[parent_[p]] == p) {
    right_[parent_[p]] = q;
  } else {
    left_[parent_[p]] = q;
  }
  parent_[p] = kNil;
}

void PlainLzari::StartModel() {
  cumulative_[kSymbols] = 0;
  for (int s = kSymbols; s >= 1; --s) {
    char_to_symbol_[s - 1] = s;
    symbol_to_char_[s] = s - 1;
    frequency_[s] = 1;
    cumulative_[s - 1] = cumulative_[s] + frequency_[s];
  }
  frequency_[0] = 0;
  position_cumulative_[kWindow] = 0;
  for (int i = kWindow; i >= 1; --i) {
    position_cumulative_[i - 1] = position_cumulative_[i] + 10000U / static_cast<unsigned>(i + 200);
  }
}

void PlainLzari::UpdateModel(int symbol) {
  if (cumulative_[0] >= kMaxCum) {
    unsigned c = 0;
    for (int i = kSymbols; i > 0; --i) {
      cumulative_[i] = c;
      c += (frequency_[i] = (frequency_[i] + 1) >> 1);
    }
    cumulative_[0] = c;
  }
  int i = symbol;
  while (frequency_[i] == frequency_[i - 1]) --i;
  if (i < symbol) {
    std::swap(symbol_to_char_[i], symbol_to_char_[symbol]);
    char_to_symbol_[symbol_to_char_[i]] = i;
    char_to_symbol_[symbol_to_char_[symbol]] = symbol;
  }
  ++frequency_[i];
  while (--i >= 0) ++cumulative_[i];
}

void PlainLzari::Narrow(unsigned upper, unsigned lower, unsigned total) {
  const std::uint32_t range = high_ - low_;
  high_ = low_ + range * upper / total;
  low_ += range * lower / total;
}

void PlainLzari::NormaliseEncoder() {
  for (;; low_ += low_, high_ += high_) {
    if (high_ <= kQ2) {
      Output(0);
    } else if (low_ >= kQ2) {
      Output(1);
      low_ -= kQ2;
      high_ -= kQ2;
    } else if (low_ >= kQ1 && high_ <= kQ3) {
      ++shifts_;
      low_ -= kQ1;
      high_ -= kQ1;
    } else {
      return;
    }
  }
}

void PlainLzari::EncodeChar(int character) {
  const int symbol = char_to_symbol_[character];
  Narrow(cumulative_[symbol - 1], cumulative_[symbol], cumulative_[0]);
  NormaliseEncoder();
  UpdateModel(symbol);
}

void PlainLzari::EncodePosition(int position) {
  Narrow(position_cumulative_[position], position_cumulative_[position + 1], position_cumulative_[0]);
  NormaliseEncoder();
}

void PlainLzari::EncodeEnd() {
  ++shifts_;
  Output(low_ < kQ1 ? 0 : 1);
  for (int i = 0; i < 7; ++i) PutBit(0);
}

std::string PlainLzari::Encode(const std::string& plain) {
  in_ = plain;
  const auto size = static_cast<std::uint32_t>(plain.size());
  for (int i = 0; i < 4; ++i) out_.push_back(static_cast<char>(size >> (8 * i)));
  if (size == 0) return out_;
  StartModel();
  InitTree();
  int s = 0;
  int r = kWindow - kLongest;
  for (int i = s; i < r; ++i) text_[i] = ' ';
  int len = 0;
  for (; len < kLongest && in_position_ < in_.size(); ++len) {
    text_[r + len] = static_cast<unsigned char>(in_[in_position_++]);
  }
  for (int i = 1; i <= kLongest; ++i) InsertNode(r - i);
  InsertNode(r);
  do {
    if (match_length_ > len) match_length_ = len;
    if (match_length_ <= kThreshold) {
      match_length_ = 1;
      EncodeChar(text_[r]);
    } else {
      EncodeChar(255 - kThreshold + match_length_);
      EncodePosition(match_position_ - 1);
    }
    const int last_match_length = match_length_;
    int i = 0;
    for (; i < last_match_length && in_position_ < in_.size(); ++i) {
      DeleteNode(s);
      text_[s] = static_cast<unsigned char>(in_[in_position_++]);
      if (s < kLongest - 1) text_[s + kWindow] = text_[s];
      s = (s + 1) & (kWindow - 1);
      r = (r + 1) & (kWindow - 1);
      InsertNode(r);
    }
    while (i++ < last_match_length) {
      DeleteNode(s);
      s = (s + 1) & (kWindow - 1);
      r = (r + 1) & (kWindow - 1);
      if (--len != 0) InsertNode(r);
    }
  } while (len > 0);
  EncodeEnd();
  return out_;
}

// One round of the loop; false once it must be left.
bool PlainLzari::NormaliseDecoderStep() {
  if (reading_ == Reading::kFile) return false;
  if (reading_ == Reading::kBuffer && in_position_ >= in_.size()) return false;
  if (low_ >= kQ2) {
    value_ -= kQ2;
    low_ -= kQ2;
    high_ -= kQ2;
  } else if (low_ >= kQ1 && high_ <= kQ3) {
    value_ -= kQ1;
    low_ -= kQ1;
    high_ -= kQ1;
  } else if (high_ > kQ2) {
    return false;
  }
  low_ += low_;
  high_ += high_;
  value_ = 2 * value_ + static_cast<std::uint32_t>(GetBit());
  return true;
}

int PlainLzari::DecodeChar() {
  const std::uint32_t range = high_ - low_;
  const std::uint32_t x = ((value_ - low_ + 1) * cumulative_[0] - 1) / range;
  int i = 1;
  for (int j = kSymbols; i < j;) {
    const int k = (i + j) / 2;
    if (cumulative_[k] <= x) {
      j = k;
    } else {
      i = k + 1;
    }
  }
  Narrow(cumulative_[i - 1], cumulative_[i], cumulative_[0]);
  while (NormaliseDecoderStep()) {
  }
  const int character = symbol_to_char_[i];
  UpdateModel(i);
  return character;
}

int PlainLzari::DecodePosition() {
  const std::uint32_t range = high_ - low_;
  const std::uint32_t x = ((value_ - low_ + 1) * position_cumulative_[0] - 1) / range;
  int i = 1;
  for (int j = kWindow; i < j;) {
    const int k = (i + j) / 2;
    if (position_cumulative_[k] <= x) {
      j = k;
    } else {
      i = k + 1;
    }
  }
  Narrow(position_cumulative_[i - 1], position_cumulative_[i], position_cumulative_[0]);
  while (NormaliseDecoderStep()) {
  }
  return i - 1;
}

void PlainLzari::TakeByte(int character, int& r, std::uint32_t& count) {
  out_.push_back(static_cast<char>(character));
  text_[r] = static_cast<unsigned char>(character);
  r = (r + 1) & (kWindow - 1);
  ++count;
}

std::string PlainLzari::Decode(const std::string& stream, Reading reading) {
  in_ = stream;
  reading_ = reading;
  if (stream.size() < 4) throw 1;
  std::uint32_t size = 0;
  for (std::size_t i = 0; i < 4; ++i) {
    size |= static_cast<std::uint32_t>(static_cast<unsigned char>(stream[i])) << (8 * i);
  }
  in_position_ = 4;
  if (size == 0) return out_;
  for (int i = 0; i < 17; ++i) value_ = 2 * value_ + static_cast<std::uint32_t>(GetBit());
  StartModel();
  int r = kWindow - kLongest;
  for (int i = 0; i < r; ++i) text_[i] = ' ';
  for (std::uint32_t count = 0; count < size;) {
    const int character = DecodeChar();
    if (character < 256) {
      TakeByte(character, r, count);
      continue;
    }
    const int from = (r - DecodePosition() - 1) & (kWindow - 1);
    const int length = character - 255 + kThreshold;
    for (int k = 0; k < length; ++k) TakeByte(text_[(from + k) & (kWindow - 1)], r, count);
  }
  return out_;
}

#pragma GCC diagnostic pop

}  // namespace lorv::test
