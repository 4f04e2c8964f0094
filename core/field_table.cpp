#include "core/field_table.h"

#include <cstdint>
#include <limits>
#include <optional>

namespace varnowick {
namespace {

template <class Value, class Target>
bool assign(const std::optional<Value>& value, Target& target) {
  if (!value) return false;
  target = *value;
  return true;
}

template <class Type>
Type& as(void* member) {
  return *static_cast<Type*>(member);
}
template <class Type>
const Type& as(const void* member) {
  return *static_cast<const Type*>(member);
}

bool readShortInteger(std::string_view value, int& target) {
  const std::optional<int> number = parseInteger(value);
  if (!number || *number < std::numeric_limits<std::int16_t>::min() ||
      *number > std::numeric_limits<std::int16_t>::max())
    return false;
  target = *number;
  return true;
}

bool readTwips(std::string_view value, bool whole, bool mayBeNegative, Twips& target) {
  const std::optional<float> number = parseSingle(value);
  if (!number || (!mayBeNegative && *number < 0)) return false;
  target.value =
      whole ? static_cast<float>(roundHalfToEven(static_cast<double>(*number))) : *number;
  return true;
}

}  // namespace

bool readMember(ValueKind kind, void* member, std::string_view value, const LineReader& lines) {
  switch (kind) {
    case ValueKind::Flag:
    case ValueKind::Word:
      return assign(parseFlag(value), as<bool>(member));
    case ValueKind::Integer:
      return assign(parseInteger(value), as<int>(member));
    case ValueKind::ShortInteger:
      return readShortInteger(value, as<int>(member));
    case ValueKind::Single:
      return assign(parseSingle(value), as<float>(member));
    case ValueKind::Position:
      return readTwips(value, false, true, as<Twips>(member));
    case ValueKind::WholePosition:
      return readTwips(value, true, true, as<Twips>(member));
    case ValueKind::Extent:
      return readTwips(value, false, false, as<Twips>(member));
    case ValueKind::WholeExtent:
      return readTwips(value, true, false, as<Twips>(member));
    case ValueKind::Colour:
      return assign(parseInteger(value), as<Colour>(member).bgr);
    case ValueKind::Text:
      return lines.decode(value, as<std::wstring>(member));
    case ValueKind::Note:
    case ValueKind::Constant:
      break;
  }
  return true;
}

void writeMember(ValueKind kind, const void* member, LineWriter& out) {
  switch (kind) {
    case ValueKind::Flag:
      return out.flag(as<bool>(member));
    case ValueKind::Word:
      return out.word(as<bool>(member));
    case ValueKind::Integer:
    case ValueKind::ShortInteger:
      return out.integer(as<int>(member));
    case ValueKind::Single:
      return out.single(as<float>(member));
    case ValueKind::Position:
    case ValueKind::Extent:
      return out.single(as<Twips>(member).value);
    case ValueKind::WholePosition:
    case ValueKind::WholeExtent:
      return out.wholeTwips(as<Twips>(member).value);
    case ValueKind::Colour:
      return out.integer(as<Colour>(member).bgr);
    case ValueKind::Text:
      return out.text(as<std::wstring>(member));
    case ValueKind::Note:
    case ValueKind::Constant:
      break;
  }
}

void readNote(FileReading& in, std::wstring& note) {
  const LineReader::Mark start = in.lines.mark();
  std::string_view line;
  bool exactEnd = false;
  while (!in.noNoteEndAhead && !exactEnd && in.lines.next(line)) exactEnd = line == kNoteEnd;
  in.noNoteEndAhead = !exactEnd;
  in.lines.goBackTo(start);

  // Without the exact marker, one with stray blanks is better than a note that
  // swallows the rest of the file.
  note.clear();
  std::wstring text;
  bool allReadable = true;
  bool first = true;
  bool ended = false;
  while (in.lines.next(line)) {
    ended = (exactEnd ? line : trimBlanks(line)) == kNoteEnd;
    if (ended) break;
    allReadable &= in.lines.decode(line, text);
    if (!first) note.append(L"\r\n");
    note.append(text);
    first = false;
  }
  if (!ended || !exactEnd) in.problem(L"The note has no end.");
  if (!allReadable) in.problem(L"The note has bytes that stand for no character.");
}

}  // namespace varnowick
