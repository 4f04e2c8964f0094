#include "shortcuts/natural_order.h"

namespace varnowick {

bool naturalLess(std::wstring_view a, std::wstring_view b) {
  const auto isDigit = [](wchar_t c) { return c >= L'0' && c <= L'9'; };
  const auto lower = [](wchar_t c) {
    return c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c - L'A' + L'a') : c;
  };
  // Digits from the front, the zeros before them left out.
  const auto number = [&](std::wstring_view& text) {
    std::size_t end = 0;
    while (end < text.size() && isDigit(text[end])) ++end;
    std::wstring_view digits = text.substr(0, end);
    text.remove_prefix(end);
    while (digits.size() > 1 && digits.front() == L'0') digits.remove_prefix(1);
    return digits;
  };
  while (!a.empty() && !b.empty()) {
    if (isDigit(a.front()) && isDigit(b.front())) {
      const std::wstring_view left = number(a);
      const std::wstring_view right = number(b);
      if (left.size() != right.size()) return left.size() < right.size();
      if (left != right) return left < right;
      continue;
    }
    const wchar_t left = lower(a.front());
    const wchar_t right = lower(b.front());
    if (left != right) return left < right;
    a.remove_prefix(1);
    b.remove_prefix(1);
  }
  return a.empty() && !b.empty();
}

}  // namespace varnowick
