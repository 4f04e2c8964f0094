#include "core/save_journal.h"

#include <array>
#include <charconv>
#include <cstring>

namespace varnowick {
namespace {

constexpr std::string_view kHead = "VARNOWICK JOURNAL 2\r\n";
constexpr std::string_view kTail = "END\r\n";
constexpr std::string_view kSettingsName = "\\Varnowick.ini";
constexpr std::string_view kRecoveryName = "\\Varnowick.REC";

std::string containerName(std::size_t number) {
  return "\\Containers\\" + std::to_string(number) + ".con";
}

void appendNumber(std::string& out, std::uint64_t number, int base, char after) {
  std::array<char, 24> buffer{};
  char* const end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number, base).ptr;
  out.append(buffer.data(), end).push_back(after);
}

// name CR LF length blank checksum CR LF bytes CR LF
void appendFile(std::string& out, std::string_view name, std::string_view bytes) {
  out.append(name).append("\r\n");
  appendNumber(out, bytes.size(), 10, ' ');
  appendNumber(out, checksum(bytes), 16, '\r');
  out.append("\n").append(bytes).append("\r\n");
}

class Parser {
 public:
  explicit Parser(std::string_view bytes) : rest_(bytes) {}

  bool take(std::string_view expected) {
    if (!rest_.starts_with(expected)) return false;
    rest_.remove_prefix(expected.size());
    return true;
  }

  bool takeNumber(int base, std::uint64_t& number) {
    const char* const end = rest_.data() + rest_.size();
    const auto [after, error] = std::from_chars(rest_.data(), end, number, base);
    if (error != std::errc{}) return false;
    rest_.remove_prefix(static_cast<std::size_t>(after - rest_.data()));
    return true;
  }

  bool takeFile(std::string_view name, std::string& bytes) {
    std::uint64_t size = 0;
    std::uint64_t sum = 0;
    if (!take(name) || !take("\r\n") || !takeNumber(10, size) || !take(" ") ||
        !takeNumber(16, sum) || !take("\r\n") || size > rest_.size())
      return false;
    const std::string_view body = rest_.substr(0, static_cast<std::size_t>(size));
    rest_.remove_prefix(body.size());
    if (checksum(body) != sum || !take("\r\n")) return false;
    bytes = body;
    return true;
  }

  std::size_t left() const { return rest_.size(); }

 private:
  std::string_view rest_;
};

}  // namespace

std::uint64_t checksum(std::string_view bytes) {
  constexpr std::uint64_t kPrime = 0x9E3779B97F4A7C15ULL;
  std::uint64_t sum = kPrime ^ bytes.size();
  const auto mix = [&sum](std::uint64_t word) {
    sum = (sum ^ word) * kPrime;
    sum ^= sum >> 32;
  };
  while (bytes.size() >= sizeof(std::uint64_t)) {
    std::uint64_t word = 0;
    std::memcpy(&word, bytes.data(), sizeof word);
    mix(word);
    bytes.remove_prefix(sizeof word);
  }
  std::uint64_t last = 0;
  std::memcpy(&last, bytes.data(), bytes.size());
  mix(last);
  return sum;
}

std::string renderJournal(const SavedState& state, std::uint64_t number) {
  std::size_t size = 256 + state.mainFile.size();
  for (const std::string& container : state.containers) size += 96 + container.size();
  std::string out;
  out.reserve(size);
  out.append(kHead);
  appendNumber(out, number, 10, ' ');
  appendNumber(out, checksum(std::to_string(number)), 16, '\r');
  out.append("\n");
  appendNumber(out, state.containers.size(), 10, '\r');
  out.append("\n");
  appendFile(out, state.recovery ? kRecoveryName : kSettingsName, state.mainFile);
  for (std::size_t i = 0; i < state.containers.size(); ++i)
    appendFile(out, containerName(i), state.containers[i]);
  out.append(kTail);
  return out;
}

std::optional<Journal> parseJournal(std::string_view bytes) {
  Parser in(bytes);
  Journal journal;
  SavedState& state = journal.state;
  std::uint64_t count = 0;
  std::uint64_t sum = 0;
  // A torn number would put the journals into another order.
  if (!in.take(kHead) || !in.takeNumber(10, journal.number) || !in.take(" ") ||
      !in.takeNumber(16, sum) || sum != checksum(std::to_string(journal.number)) ||
      !in.take("\r\n") || !in.takeNumber(10, count) || !in.take("\r\n"))
    return std::nullopt;
  if (!in.takeFile(kSettingsName, state.mainFile)) {
    state.recovery = in.takeFile(kRecoveryName, state.mainFile);
    if (!state.recovery) return std::nullopt;
  }
  for (std::uint64_t i = 0; i < count; ++i) {
    std::string container;
    if (!in.takeFile(containerName(static_cast<std::size_t>(i)), container)) return std::nullopt;
    state.containers.push_back(std::move(container));
  }
  if (!in.take(kTail) || in.left() != 0) return std::nullopt;
  return journal;
}

}  // namespace varnowick
