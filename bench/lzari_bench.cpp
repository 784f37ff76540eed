#include <benchmark/benchmark.h>

#include <memory>
#include <random>
#include <string>

#include "compress/AdRar.h"
#include "tests/compress/lzari/plain_lzari.h"

// The codec beside the plain writing of its algorithm, over texts, a table and noise.
namespace {

using lorv::test::PlainLzari;

// The inputs differ in what the search meets: short repeats far apart, a small vocabulary, long repeats.
std::string Table() {
  std::mt19937 next(1);
  std::string text;
  for (int i = 0; text.size() < 300000; ++i) {
    text += std::to_string(i) + ",KL" + std::to_string(next() % 400) + ",C30," +
            std::to_string(next() % 9000) + ".5\r\n";
  }
  return text;
}

std::string Text() {
  const char* const words[] = {"墙",      "梁",    "板",         "KL",    "C30",
                               "250*500", "L*B*H", "钢筋混凝土", "beam ", "\r\n"};
  std::mt19937 next(2);
  std::string text;
  while (text.size() < 300000) text += words[next() % 10] + std::to_string(next() % 100);
  return text;
}

std::string Form() {
  std::string text;
  for (int i = 0; text.size() < 300000; ++i) {
    text += "<wall><height unit=\"mm\">" + std::to_string(i * 7 % 50 * 100) + "</height><grade>C" +
            std::to_string(20 + i % 7 * 5) + "</grade></wall>\r\n";
  }
  return text;
}

const std::string& Plain(const benchmark::State& state) {
  // Made once, since the data must not be part of the time.
  static const std::string inputs[] = {Table(), Text(), Form()};
  return inputs[state.range(0)];
}

const std::string& Stream(const benchmark::State& state) {
  // By the plain writing, so that a decoder is measured on streams that its own encoder did not make.
  static const std::string streams[] = {PlainLzari().Encode(Table()), PlainLzari().Encode(Text()),
                                        PlainLzari().Encode(Form())};
  return streams[state.range(0)];
}

void Count(benchmark::State& state) {
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(Plain(state).size()));
}

void LzariEncode(benchmark::State& state) {
  const std::string& plain = Plain(state);
  for (auto _ : state) {
    // On the heap: an object has a hundred kilobytes. Made anew, since it keeps state from one operation to
    // the next.
    const auto codec = std::make_unique<CAdRar>();
    // Else each operation prints lines, and the terminal is measured.
    codec->SetProgress([](std::uint32_t) {});
    const unsigned char* result = nullptr;
    int length = 0;
    codec->Compress(reinterpret_cast<const unsigned char*>(plain.data()), static_cast<int>(plain.size()),
                    result, length);
    benchmark::DoNotOptimize(result);
  }
  Count(state);
}

void LzariEncodePlain(benchmark::State& state) {
  const std::string& plain = Plain(state);
  for (auto _ : state) benchmark::DoNotOptimize(std::make_unique<PlainLzari>()->Encode(plain));
  Count(state);
}

void Decode(benchmark::State& state, bool exact) {
  const std::string& stream = Stream(state);
  for (auto _ : state) {
    const auto codec = std::make_unique<CAdRar>();
    codec->SetExactDecoding(exact);
    codec->SetProgress([](std::uint32_t) {});
    const unsigned char* result = nullptr;
    int length = 0;
    codec->UnCompress(reinterpret_cast<const unsigned char*>(stream.data()), static_cast<int>(stream.size()),
                      result, length);
    benchmark::DoNotOptimize(result);
  }
  Count(state);
}

void DecodePlain(benchmark::State& state, PlainLzari::Reading reading) {
  const std::string& stream = Stream(state);
  for (auto _ : state) benchmark::DoNotOptimize(std::make_unique<PlainLzari>()->Decode(stream, reading));
  Count(state);
}

void LzariDecode(benchmark::State& state) {
  Decode(state, true);
}
void LzariDecodePlain(benchmark::State& state) {
  DecodePlain(state, PlainLzari::Reading::kExact);
}
void LzariGuarded(benchmark::State& state) {
  Decode(state, false);
}
void LzariGuardedPlain(benchmark::State& state) {
  DecodePlain(state, PlainLzari::Reading::kBuffer);
}

BENCHMARK(LzariEncode)->DenseRange(0, 2);
BENCHMARK(LzariEncodePlain)->DenseRange(0, 2);
BENCHMARK(LzariDecode)->DenseRange(0, 2);
BENCHMARK(LzariDecodePlain)->DenseRange(0, 2);
BENCHMARK(LzariGuarded)->DenseRange(0, 2);
BENCHMARK(LzariGuardedPlain)->DenseRange(0, 2);

}  // namespace

BENCHMARK_MAIN();
