#include "tests/e2e/harness/accessible.h"

#include "tests/e2e/harness/waiting.h"

namespace varnowick::e2e {
namespace {

VARIANT childId(LONG id) {
  VARIANT v{};
  v.vt = VT_I4;
  v.lVal = id;
  return v;
}

LONG number(const VARIANT& v) { return v.vt == VT_I4 ? v.lVal : 0; }

}  // namespace

AccessibleWindow::AccessibleWindow(HWND window) {
  const HRESULT result = AccessibleObjectFromWindow(window, static_cast<DWORD>(OBJID_CLIENT),
                                                    IID_IAccessible, object_.putVoid());
  if (FAILED(result) || !object_) throw HarnessError(L"the window has no accessible object");
}

std::wstring AccessibleWindow::name() const {
  ComString text;
  object_->get_accName(childId(CHILDID_SELF), text.put());
  return text.text();
}

AccessibleItem AccessibleWindow::item(LONG id) const {
  AccessibleItem found;
  found.id = id;
  ComString name;
  object_->get_accName(childId(id), name.put());
  found.name = name.text();
  VARIANT v{};
  if (SUCCEEDED(object_->get_accRole(childId(id), &v))) found.role = number(v);
  v = {};
  if (SUCCEEDED(object_->get_accState(childId(id), &v))) found.state = number(v);
  LONG x = 0, y = 0, width = 0, height = 0;
  if (SUCCEEDED(object_->accLocation(&x, &y, &width, &height, childId(id)))) {
    found.rect = {x, y, x + width, y + height};
  }
  return found;
}

std::vector<AccessibleItem> AccessibleWindow::items() const {
  LONG count = 0;
  object_->get_accChildCount(&count);
  std::vector<AccessibleItem> all;
  for (LONG id = 1; id <= count; ++id) all.push_back(item(id));
  return all;
}

std::optional<AccessibleItem> AccessibleWindow::find(const std::wstring& name, LONG role) const {
  for (const AccessibleItem& candidate : items()) {
    if (candidate.name == name && (role == 0 || candidate.role == role)) return candidate;
  }
  return std::nullopt;
}

AccessibleItem AccessibleWindow::waitFor(const std::wstring& name, LONG role) const {
  std::optional<AccessibleItem> found;
  if (!e2e::waitFor([&] { return (found = find(name, role)).has_value(); })) {
    throw HarnessError(L"no accessible child named " + name + L"; there are: " + describe());
  }
  return *found;
}

std::wstring AccessibleWindow::defaultAction(const AccessibleItem& item) const {
  ComString text;
  object_->get_accDefaultAction(childId(item.id), text.put());
  return text.text();
}

void AccessibleWindow::doDefaultAction(const AccessibleItem& item) const {
  if (FAILED(object_->accDoDefaultAction(childId(item.id)))) {
    throw HarnessError(L"the default action was refused: " + item.name);
  }
}

std::wstring AccessibleWindow::describe() const {
  std::wstring all;
  for (const AccessibleItem& i : items()) {
    all += (all.empty() ? L"" : L", ") + i.name + L" (role " + std::to_wstring(i.role) + L")";
  }
  return all;
}

}  // namespace varnowick::e2e
