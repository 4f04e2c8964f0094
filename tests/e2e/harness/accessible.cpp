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

LONG numberIn(const VARIANT& v) { return v.vt == VT_I4 ? v.lVal : 0; }

std::wstring nameOf(const ComPtr<IAccessible>& object, LONG id) {
  ComString name;
  object->get_accName(childId(id), name.put());
  return name.text();
}

// The child's own object; null for one that has none.
ComPtr<IAccessible> objectAt(const ComPtr<IAccessible>& parent, LONG id) {
  ComPtr<IDispatch> child;
  ComPtr<IAccessible> object;
  if (parent->get_accChild(childId(id), child.put()) == S_OK && child)
    child->QueryInterface(IID_IAccessible, object.putVoid());
  return object;
}

}  // namespace

AccessibleWindow::AccessibleWindow(HWND window) {
  const HRESULT result = AccessibleObjectFromWindow(window, static_cast<DWORD>(OBJID_CLIENT),
                                                    IID_IAccessible, object_.putVoid());
  if (FAILED(result) || !object_) throw HarnessError(L"the window has no accessible object");
}

std::wstring AccessibleWindow::name() const { return nameOf(object_, CHILDID_SELF); }

AccessibleItem AccessibleWindow::item(const Object& parent, LONG id) {
  AccessibleItem found;
  found.parent = parent;
  found.id = id;
  found.name = nameOf(parent, id);
  VARIANT v{};
  if (SUCCEEDED(parent->get_accRole(childId(id), &v))) found.role = numberIn(v);
  v = {};
  if (SUCCEEDED(parent->get_accState(childId(id), &v))) found.state = numberIn(v);
  LONG x = 0, y = 0, width = 0, height = 0;
  if (SUCCEEDED(parent->accLocation(&x, &y, &width, &height, childId(id)))) {
    found.rect = {x, y, x + width, y + height};
  }
  return found;
}

bool AccessibleWindow::walk(const Object& parent, const Visit& visit) {
  LONG count = 0;
  parent->get_accChildCount(&count);
  for (LONG id = 1; id <= count; ++id) {
    if (visit(parent, id)) return true;
    const Object below = objectAt(parent, id);
    if (below && walk(below, visit)) return true;
  }
  return false;
}

std::vector<AccessibleItem> AccessibleWindow::items() const {
  std::vector<AccessibleItem> all;
  walk(object_, [&](const Object& parent, LONG id) {
    all.push_back(item(parent, id));
    return false;
  });
  return all;
}

std::optional<AccessibleItem> AccessibleWindow::find(const std::wstring& name, LONG role) const {
  std::optional<AccessibleItem> found;
  walk(object_, [&](const Object& parent, LONG id) {
    if (nameOf(parent, id) != name) return false;
    found = item(parent, id);
    if (role != 0 && found->role != role) found.reset();
    return found.has_value();
  });
  return found;
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
  item.parent->get_accDefaultAction(childId(item.id), text.put());
  return text.text();
}

void AccessibleWindow::doDefaultAction(const AccessibleItem& item) const {
  if (FAILED(item.parent->accDoDefaultAction(childId(item.id)))) {
    throw HarnessError(L"the default action was refused: " + item.name);
  }
}

std::vector<std::wstring> AccessibleWindow::selection(const std::wstring& group) const {
  Object object = object_;
  if (!group.empty()) {
    const AccessibleItem found = waitFor(group);
    object = objectAt(found.parent, found.id);
    if (!object) throw HarnessError(L"this has no children: " + group);
  }
  VARIANT selected{};
  if (FAILED(object->get_accSelection(&selected))) throw HarnessError(L"no selection");
  std::vector<std::wstring> names;
  const auto add = [&](const VARIANT& value) {
    ComPtr<IAccessible> child;
    if (value.vt == VT_I4) names.push_back(nameOf(object, value.lVal));
    if (value.vt == VT_DISPATCH &&
        SUCCEEDED(value.pdispVal->QueryInterface(IID_IAccessible, child.putVoid())))
      names.push_back(nameOf(child, CHILDID_SELF));
  };
  ComPtr<IEnumVARIANT> several;
  if (selected.vt == VT_UNKNOWN &&
      SUCCEEDED(selected.punkVal->QueryInterface(IID_IEnumVARIANT, several.putVoid()))) {
    for (VARIANT one{}; several->Next(1, &one, nullptr) == S_OK; VariantClear(&one)) add(one);
  } else {
    add(selected);
  }
  VariantClear(&selected);
  return names;
}

void AccessibleWindow::select(const AccessibleItem& item, LONG flags) const {
  if (FAILED(item.parent->accSelect(flags, childId(item.id))))
    throw HarnessError(L"the selection was refused: " + item.name);
}

std::wstring AccessibleWindow::describe() const {
  std::wstring all;
  for (const AccessibleItem& i : items()) {
    all += (all.empty() ? L"" : L", ") + i.name + L" (role " + std::to_wstring(i.role) + L")";
  }
  return all;
}

}  // namespace varnowick::e2e
