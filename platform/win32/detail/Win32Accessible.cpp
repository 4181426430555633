#include "platform/win32/detail/Win32Accessible.h"

#include <algorithm>
#include <atomic>
#include <iterator>
#include <string>

#include "platform/win32/detail/AutomationPatterns.h"
#include "platform/win32/detail/ComPointer.h"
#include "platform/win32/detail/PlatformText.h"
#include "platform/win32/detail/SystemCalls.h"
#include "platform/win32/detail/Win32Window.h"

// oleacc.h has them by reference only.
#include <initguid.h>
#include <oleacc.h>

namespace tessalink::detail {

namespace {

constexpr const wchar_t* cCore = L"uiautomationcore.dll";
// Numbers of the interface that not all headers have.
constexpr PROPERTYID cValueProperty = 30045;
constexpr PROPERTYID cValueIsReadOnlyProperty = 30046;
constexpr PROPERTYID cToggleStateProperty = 30086;
constexpr PROPERTYID cIsSelectedProperty = 30079;
constexpr PATTERNID cInvokePattern = 10000;
constexpr PATTERNID cValuePattern = 10002;
constexpr PATTERNID cSelectionItemPattern = 10010;
constexpr PATTERNID cTogglePattern = 10015;
constexpr EVENTID cFocusEvent = 20005;
constexpr EVENTID cLiveRegionEvent = 20024;
constexpr int cChildrenInvalidated = 2;
constexpr int cOtherNotification = 4;
constexpr int cMostRecent = 3;

struct Control {
    AccessibleRole role;
    long type;
};
constexpr Control cControls[] = {
    {AccessibleRole::Form, 50026},       {AccessibleRole::List, 50008},
    {AccessibleRole::Graph, 50006},      {AccessibleRole::EditableText, 50004},
    {AccessibleRole::CheckGroup, 50026}, {AccessibleRole::RadioGroup, 50026},
    {AccessibleRole::ListItem, 50007},   {AccessibleRole::GraphPoint, 50006},
    {AccessibleRole::Tip, 50022},        {AccessibleRole::Client, 50033},
};
constexpr long cCheckBox = 50002;
constexpr long cRadioButton = 50013;

long controlOf(AccessibleRole role) {
    const auto* const found =
        std::find_if(std::begin(cControls), std::end(cControls),
                     [role](const Control& control) { return control.role == role; });
    return found->type;
}

std::wstring shownText(const CString& text) {
    return toPlatform(text.View());
}

// Its address marks messages of this process that carry a function.
const char sender = 0;

BSTR makeText(const CString& text) {
    const std::wstring shown = shownText(text);
    return ::SysAllocStringLen(shown.data(), static_cast<UINT>(shown.size()));
}

// A part of a window, a choice in it, or the window itself.
struct Place {
    HWND window = nullptr;
    int part = cNoAccessibleChild;
    int choice = cNoAccessibleChild;

    bool IsWindow() const { return part < 0; }
    bool IsChoice() const { return choice >= 0; }
};

// What is told of a place, as it is now.
struct Told {
    AccessibleElement element;  // of a choice: the group
    AccessibleChoice choice;
    CString announcement;
    CPoint origin;  // of the client area, in pixels of the screen
    Scale scale;
    int partCount = 0;
    int focusedPart = cNoAccessibleChild;
    bool isThere = false;
};

Told look(Win32Window& window, const Place& place) {
    const CWnd& owner = window.Owner();
    Told told;
    told.partCount = owner.AccessibleChildCount();
    told.focusedPart = owner.AccessibleFocusChild();
    told.element = accessibleElement(&owner, place.part);
    told.announcement = window.Announcement(place.part);
    told.scale = window.Units();
    POINT origin = {};
    ::ClientToScreen(place.window, &origin);
    told.origin = origin;
    told.isThere = place.part < told.partCount;
    if (!place.IsChoice()) return told;
    const auto index = static_cast<std::size_t>(place.choice);
    told.isThere = told.isThere && index < told.element.choices.size();
    if (told.isThere) told.choice = told.element.choices[index];
    return told;
}

Told ask(const Place& place) {
    Told told;
    callInWindow(place.window, [&](Win32Window& window) { told = look(window, place); });
    return told;
}

// UI Automation is asked for when somebody needs it; the platform has it always.
template <class Function>
Function* automationCall(const char* name) {
    return loadedCall<Function>(cCore, name);
}

class Provider final : public IRawElementProviderSimple,
                       public IRawElementProviderFragment,
                       public IRawElementProviderFragmentRoot,
                       public InvokePattern,
                       public TogglePattern,
                       public SelectionItemPattern,
                       public ValuePattern {
public:
    explicit Provider(const Place& place) : m_place(place) {}
    virtual ~Provider() = default;

    // Counting and interfaces.
    ULONG STDMETHODCALLTYPE AddRef() override { return ++m_count; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = --m_count;
        if (left == 0) delete this;
        return left;
    }
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** result) override {
        *result = interface_of(id);
        if (*result == nullptr) return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }

    // IRawElementProviderSimple.
    HRESULT STDMETHODCALLTYPE get_ProviderOptions(ProviderOptions* options) override {
        *options = ProviderOptions_ServerSideProvider;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetPatternProvider(PATTERNID pattern, IUnknown** result) override {
        *result = nullptr;
        const Told told = ask(m_place);
        if (!told.isThere) return cNotThere;
        *result = pattern_of(pattern, told);
        if (*result != nullptr) AddRef();
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetPropertyValue(PROPERTYID property, VARIANT* value) override {
        ::VariantInit(value);
        const Told told = ask(m_place);
        if (!told.isThere) return cNotThere;
        tell_property(property, told, *value);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE
    get_HostRawElementProvider(IRawElementProviderSimple** result) override {
        *result = nullptr;
        if (!m_place.IsWindow()) return S_OK;
        auto* const call = automationCall<HRESULT WINAPI(HWND, IRawElementProviderSimple**)>(
            "UiaHostProviderFromHwnd");
        return call != nullptr ? call(m_place.window, result) : S_OK;
    }

    // IRawElementProviderFragment.
    HRESULT STDMETHODCALLTYPE Navigate(NavigateDirection direction,
                                       IRawElementProviderFragment** result) override {
        *result = nullptr;
        const Told told = ask(m_place);
        if (!told.isThere) return cNotThere;
        Place target = m_place;
        if (leads(direction, told, target)) *result = new Provider(target);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetRuntimeId(SAFEARRAY** result) override {
        *result = nullptr;
        // A window has that of the platform.
        if (m_place.IsWindow()) return S_OK;
        const LONG numbers[] = {cAppendedId, m_place.part, m_place.choice};
        *result = ::SafeArrayCreateVector(VT_I4, 0, static_cast<ULONG>(std::size(numbers)));
        if (*result == nullptr) return E_OUTOFMEMORY;
        for (LONG i = 0; i < static_cast<LONG>(std::size(numbers)); ++i) {
            LONG number = numbers[i];
            ::SafeArrayPutElement(*result, &i, &number);
        }
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE get_BoundingRectangle(UiaRect* result) override {
        *result = {};
        if (m_place.IsWindow()) return S_OK;
        const Told told = ask(m_place);
        if (!told.isThere) return cNotThere;
        CRect place = told.scale.Edges(m_place.IsChoice() ? told.choice.rect : told.element.rect);
        place.OffsetRect(told.origin);
        result->left = place.left;
        result->top = place.top;
        result->width = place.Width();
        result->height = place.Height();
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetEmbeddedFragmentRoots(SAFEARRAY** result) override {
        *result = nullptr;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE SetFocus() override {
        if (m_place.IsWindow()) {
            return act([](CWnd& window) { window.SetFocus(); });
        }
        return act([this](CWnd& window) { window.ChooseAccessibleChild(m_place.part); });
    }
    HRESULT STDMETHODCALLTYPE get_FragmentRoot(IRawElementProviderFragmentRoot** result) override {
        *result = new Provider({m_place.window});
        return S_OK;
    }

    // IRawElementProviderFragmentRoot.
    HRESULT STDMETHODCALLTYPE
    ElementProviderFromPoint(double x, double y, IRawElementProviderFragment** result) override {
        *result = nullptr;
        Place found = {m_place.window};
        const bool isThere = callInWindow(m_place.window, [&](Win32Window& window) {
            POINT pixel = {static_cast<LONG>(x), static_cast<LONG>(y)};
            ::ScreenToClient(m_place.window, &pixel);
            const CPoint unit = window.Units().UnitsOf(pixel);
            found.part = window.Owner().AccessibleChildAt(unit);
            if (found.part < 0) return;
            const auto choices = window.Owner().AccessibleChild(found.part).choices;
            const auto choice =
                std::find_if(choices.begin(), choices.end(),
                             [&](const AccessibleChoice& one) { return one.rect.PtInRect(unit); });
            if (choice != choices.end()) found.choice = static_cast<int>(choice - choices.begin());
        });
        if (!isThere) return cNotThere;
        if (!found.IsWindow()) *result = new Provider(found);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetFocus(IRawElementProviderFragment** result) override {
        *result = nullptr;
        const Told told = ask({m_place.window});
        if (!told.isThere) return cNotThere;
        if (told.focusedPart < 0) return S_OK;
        const Told part = ask({m_place.window, told.focusedPart});
        *result = new Provider({m_place.window, told.focusedPart, part.element.focusedChoice});
        return S_OK;
    }

    // What can be done.
    HRESULT STDMETHODCALLTYPE Invoke() override { return SetFocus(); }
    HRESULT STDMETHODCALLTYPE Toggle() override { return choose(); }
    HRESULT STDMETHODCALLTYPE get_ToggleState(int* state) override {
        const Told told = ask(m_place);
        *state = told.choice.isChecked ? 1 : 0;
        return told.isThere ? S_OK : cNotThere;
    }
    HRESULT STDMETHODCALLTYPE Select() override { return choose(); }
    HRESULT STDMETHODCALLTYPE AddToSelection() override { return cNotPossible; }
    HRESULT STDMETHODCALLTYPE RemoveFromSelection() override { return cNotPossible; }
    HRESULT STDMETHODCALLTYPE get_IsSelected(BOOL* isSelected) override {
        const Told told = ask(m_place);
        *isSelected = told.choice.isChecked ? TRUE : FALSE;
        return told.isThere ? S_OK : cNotThere;
    }
    HRESULT STDMETHODCALLTYPE get_SelectionContainer(IRawElementProviderSimple** result) override {
        *result = new Provider({m_place.window, m_place.part});
        return S_OK;
    }
    // Values are keyed.
    HRESULT STDMETHODCALLTYPE SetValue(LPCWSTR) override { return cNotPossible; }
    HRESULT STDMETHODCALLTYPE get_Value(BSTR* value) override {
        const Told told = ask(m_place);
        *value = makeText(told.element.value);
        return told.isThere ? S_OK : cNotThere;
    }
    HRESULT STDMETHODCALLTYPE get_IsReadOnly(BOOL* isReadOnly) override {
        const Told told = ask(m_place);
        *isReadOnly = told.element.isReadOnly ? TRUE : FALSE;
        return told.isThere ? S_OK : cNotThere;
    }

private:
    void* interface_of(REFIID id) {
        if (id == IID_IUnknown || id == __uuidof(IRawElementProviderSimple)) {
            return static_cast<IRawElementProviderSimple*>(this);
        }
        if (id == __uuidof(IRawElementProviderFragment)) {
            return static_cast<IRawElementProviderFragment*>(this);
        }
        if (id == __uuidof(IRawElementProviderFragmentRoot) && m_place.IsWindow()) {
            return static_cast<IRawElementProviderFragmentRoot*>(this);
        }
        if (id == InvokePattern::cId) return static_cast<InvokePattern*>(this);
        if (id == TogglePattern::cId) return static_cast<TogglePattern*>(this);
        if (id == SelectionItemPattern::cId) return static_cast<SelectionItemPattern*>(this);
        if (id == ValuePattern::cId) return static_cast<ValuePattern*>(this);
        return nullptr;
    }
    IUnknown* pattern_of(PATTERNID pattern, const Told& told) {
        const bool isRadio = told.element.role == AccessibleRole::RadioGroup;
        const bool isPart = !m_place.IsWindow() && !m_place.IsChoice();
        switch (pattern) {
            case cTogglePattern:
                return m_place.IsChoice() && !isRadio ? static_cast<TogglePattern*>(this) : nullptr;
            case cSelectionItemPattern:
                return m_place.IsChoice() && isRadio ? static_cast<SelectionItemPattern*>(this)
                                                     : nullptr;
            case cInvokePattern:
                return isPart ? static_cast<InvokePattern*>(this) : nullptr;
            case cValuePattern:
                return isPart ? static_cast<ValuePattern*>(this) : nullptr;
            default:
                return nullptr;
        }
    }
    static void tell(VARIANT& value, const CString& text) {
        if (text.IsEmpty()) return;
        value.vt = VT_BSTR;
        value.bstrVal = makeText(text);
    }
    static void tell(VARIANT& value, bool state) {
        value.vt = VT_BOOL;
        value.boolVal = state ? VARIANT_TRUE : VARIANT_FALSE;
    }
    static void tell(VARIANT& value, long number) {
        value.vt = VT_I4;
        value.lVal = number;
    }
    bool has_focus(const Told& told) const {
        const bool isFocused = told.element.isFocused;
        return m_place.IsChoice() ? isFocused && told.element.focusedChoice == m_place.choice
                                  : isFocused && told.element.focusedChoice < 0;
    }
    long control(const Told& told) const {
        if (!m_place.IsChoice()) return controlOf(told.element.role);
        return told.element.role == AccessibleRole::RadioGroup ? cRadioButton : cCheckBox;
    }
    void tell_property(PROPERTYID property, const Told& told, VARIANT& value) const {
        const AccessibleElement& element = told.element;
        switch (property) {
            case UIA_ControlTypePropertyId:
                return tell(value, control(told));
            case UIA_NamePropertyId:
                return tell(value, m_place.IsChoice() ? told.choice.name : element.name);
            case UIA_HelpTextPropertyId:
                return tell(value,
                            told.announcement.IsEmpty() ? element.description : told.announcement);
            case UIA_IsEnabledPropertyId:
                return tell(value, !element.isDisabled);
            case UIA_HasKeyboardFocusPropertyId:
                return tell(value, has_focus(told));
            case UIA_IsKeyboardFocusablePropertyId:
                return tell(value, !element.isDisabled);
            case UIA_IsRequiredForFormPropertyId:
                return tell(value, element.isRequired);
            case UIA_IsDataValidForFormPropertyId:
                return tell(value, !element.isInvalid);
            case cValueProperty:
                return tell(value, element.value);
            case cValueIsReadOnlyProperty:
                return tell(value, element.isReadOnly);
            case cToggleStateProperty:
                return tell(value, static_cast<long>(told.choice.isChecked ? 1 : 0));
            case cIsSelectedProperty:
                return tell(value, told.choice.isChecked);
            default:
                return;
        }
    }
    // The windows in a window are told by the platform.
    bool leads(NavigateDirection direction, const Told& told, Place& target) const {
        int& index = m_place.IsChoice() ? target.choice : target.part;
        const auto choices = static_cast<int>(told.element.choices.size());
        const int siblings = m_place.IsChoice() ? choices : told.partCount;
        const int children = m_place.IsWindow() ? told.partCount : m_place.IsChoice() ? 0 : choices;
        switch (direction) {
            case NavigateDirection_Parent:
                index = cNoAccessibleChild;
                return !m_place.IsWindow();
            case NavigateDirection_NextSibling:
                return !m_place.IsWindow() && ++index < siblings;
            case NavigateDirection_PreviousSibling:
                return !m_place.IsWindow() && --index >= 0;
            default:
                (m_place.IsWindow() ? target.part : target.choice) =
                    direction == NavigateDirection_FirstChild ? 0 : children - 1;
                return children > 0;
        }
    }
    HRESULT act(const std::function<void(CWnd&)>& action) const {
        const Told told = ask(m_place);
        if (!told.isThere) return cNotThere;
        callInWindow(m_place.window, [&](Win32Window& window) { action(window.Owner()); });
        return S_OK;
    }
    HRESULT choose() const {
        return act(
            [this](CWnd& window) { window.ChooseAccessibleChoice(m_place.part, m_place.choice); });
    }

    Place m_place;
    std::atomic<ULONG> m_count = 1;
};

ComPointer<IRawElementProviderSimple> providerAt(const Place& place) {
    return ComPointer<IRawElementProviderSimple>(
        static_cast<IRawElementProviderSimple*>(new Provider(place)));
}

bool isSomebodyListening() {
    static auto* const call = automationCall<BOOL WINAPI()>("UiaClientsAreListening");
    return call != nullptr && call() != 0;
}

void raiseEvent(const Place& place, EVENTID event) {
    static auto* const call = automationCall<HRESULT WINAPI(IRawElementProviderSimple*, EVENTID)>(
        "UiaRaiseAutomationEvent");
    if (call != nullptr) call(providerAt(place).Get(), event);
}

void raiseChange(const Place& place, PROPERTYID property) {
    static auto* const call =
        automationCall<HRESULT WINAPI(IRawElementProviderSimple*, PROPERTYID, VARIANT, VARIANT)>(
            "UiaRaiseAutomationPropertyChangedEvent");
    if (call == nullptr) return;
    const auto provider = providerAt(place);
    VARIANT before;
    VARIANT now;
    ::VariantInit(&before);
    provider->GetPropertyValue(property, &now);
    call(provider.Get(), property, before, now);
    ::VariantClear(&now);
}

void raiseStructure(const Place& place) {
    static auto* const call =
        automationCall<HRESULT WINAPI(IRawElementProviderSimple*, int, int*, int)>(
            "UiaRaiseStructureChangedEvent");
    if (call != nullptr) call(providerAt(place).Get(), cChildrenInvalidated, nullptr, 0);
}

void announce(const Place& place, const CString& text) {
    static auto* const call =
        automationCall<HRESULT WINAPI(IRawElementProviderSimple*, int, int, BSTR, BSTR)>(
            "UiaRaiseNotificationEvent");
    if (call == nullptr) return raiseEvent(place, cLiveRegionEvent);
    const BSTR shown = makeText(text);
    const BSTR activity = makeText("tessalink");
    call(providerAt(place).Get(), cOtherNotification, cMostRecent, shown, activity);
    ::SysFreeString(shown);
    ::SysFreeString(activity);
}

void tellValue(const Place& place) {
    raiseChange(place, cValueProperty);
    const Told told = ask(place);
    const bool isRadio = told.element.role == AccessibleRole::RadioGroup;
    for (int i = 0; i < static_cast<int>(told.element.choices.size()); ++i) {
        raiseChange({place.window, place.part, i},
                    isRadio ? cIsSelectedProperty : cToggleStateProperty);
    }
}

void tellFocus(const Place& place) {
    const Told told = ask(place);
    const int choice = place.IsWindow() ? cNoAccessibleChild : told.element.focusedChoice;
    raiseEvent({place.window, place.part, choice}, cFocusEvent);
}

}  // namespace

bool callInWindow(HWND window, const std::function<void(Win32Window&)>& function) {
    if (::GetWindowThreadProcessId(window, nullptr) == ::GetCurrentThreadId()) {
        Win32Window* const known = Win32WindowSystem::Get().WindowOf(window);
        if (known != nullptr) function(*known);
        return known != nullptr;
    }
    return ::SendMessageW(window, cCallFunction, reinterpret_cast<WPARAM>(&sender),
                          reinterpret_cast<LPARAM>(&function)) == 1;
}

bool carriesFunction(WPARAM wParam) {
    return wParam == reinterpret_cast<WPARAM>(&sender);
}

IRawElementProviderSimple* makeProvider(HWND window) {
    return new Provider({window});
}

std::optional<LRESULT> accessibleObject(Win32Window& window, WPARAM wParam, LPARAM lParam) {
    // The number has 32 bits, whatever a parameter has.
    const bool isAsked = static_cast<LONG>(lParam) == cRootObject;
    if (!isAsked || window.Edit() != nullptr) return std::nullopt;
    auto* const call =
        automationCall<LRESULT WINAPI(HWND, WPARAM, LPARAM, IRawElementProviderSimple*)>(
            "UiaReturnRawElementProvider");
    if (call == nullptr) return std::nullopt;
    return call(window.Handle(), wParam, lParam, providerAt({window.Handle()}).Get());
}

void tellAccessible(Win32Window& window, AccessibleEvent event, int child) {
    if (!isSomebodyListening()) return;
    const Place place = {window.Handle(), child};
    switch (event) {
        case AccessibleEvent::Focus:
            return tellFocus(place);
        case AccessibleEvent::ValueChanged:
            return tellValue(place);
        case AccessibleEvent::StateChanged:
            return raiseChange(place, cValueIsReadOnlyProperty);
        case AccessibleEvent::Announcement:
            return announce(place, window.Announcement(child));
        case AccessibleEvent::ChildrenChanged:
            return raiseStructure(place);
    }
}

void tellFieldFocus(Win32Window& window) {
    if (!isSomebodyListening()) return;
    ComPointer<IAccPropServices> names;
    const HRESULT result = ::CoCreateInstance(CLSID_AccPropServices, nullptr, CLSCTX_INPROC_SERVER,
                                              IID_IAccPropServices, names.Room());
    if (FAILED(result)) return;
    const AccessibleElement element = window.Owner().Accessible();
    const auto name = [&](const MSAAPROPID& property, const CString& text) {
        names->SetHwndPropStr(window.Handle(), static_cast<DWORD>(OBJID_CLIENT), CHILDID_SELF,
                              property, shownText(text).c_str());
    };
    name(PROPID_ACC_NAME, element.name);
    name(PROPID_ACC_DESCRIPTION, accessibleDescription(element));
    ::NotifyWinEvent(EVENT_OBJECT_FOCUS, window.Handle(), OBJID_CLIENT, CHILDID_SELF);
}

void forgetAccessible(HWND window) {
    if (!isSomebodyListening()) return;
    auto* const call =
        automationCall<LRESULT WINAPI(HWND, WPARAM, LPARAM, IRawElementProviderSimple*)>(
            "UiaReturnRawElementProvider");
    if (call != nullptr) call(window, 0, 0, nullptr);
}

}  // namespace tessalink::detail
