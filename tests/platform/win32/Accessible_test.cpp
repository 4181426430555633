// What UI Automation is told of the parts of windows.
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "dataentry/CheckBoxItemUI.h"
#include "dataentry/DataEntryCtl.h"
#include "dataentry/IntegerDataEntryUI.h"
#include "dataentry/SingleColLayoutMgr.h"
#include "dataentry/TextDataEntryUI.h"
#include "platform/win32/detail/AutomationPatterns.h"
#include "platform/win32/detail/ComPointer.h"
#include "platform/win32/detail/PlatformText.h"
#include "platform/win32/detail/Win32Accessible.h"
#include "tests/platform/win32/Win32Driver.h"

namespace tessalink::test {
namespace {

using detail::ComPointer;
using Fragment = ComPointer<IRawElementProviderFragment>;

constexpr PATTERNID cInvoke = 10000;
constexpr PATTERNID cValue = 10002;
constexpr PATTERNID cSelectionItem = 10010;
constexpr PATTERNID cToggle = 10015;
constexpr long cGroup = 50026;
constexpr long cEdit = 50004;
constexpr long cCheckBox = 50002;
constexpr long cRadioButton = 50013;

template <class Interface>
ComPointer<Interface> as(IUnknown* object) {
    ComPointer<Interface> result;
    if (object != nullptr) object->QueryInterface(__uuidof(Interface), result.Room());
    return result;
}

template <class Pattern>
ComPointer<Pattern> patternOf(const Fragment& fragment, PATTERNID number) {
    ComPointer<IUnknown> found;
    as<IRawElementProviderSimple>(fragment.Get())->GetPatternProvider(number, found.Place());
    ComPointer<Pattern> result;
    if (found) found->QueryInterface(Pattern::cId, result.Room());
    return result;
}

Fragment step(const Fragment& from, NavigateDirection direction) {
    Fragment next;
    EXPECT_EQ(from->Navigate(direction, next.Place()), S_OK);
    return next;
}

std::vector<Fragment> childrenOf(const Fragment& parent) {
    std::vector<Fragment> children;
    Fragment child = step(parent, NavigateDirection_FirstChild);
    while (child) {
        Fragment next = step(child, NavigateDirection_NextSibling);
        children.push_back(std::move(child));
        child = std::move(next);
    }
    return children;
}

class Property {
public:
    Property(const Fragment& fragment, PROPERTYID property) {
        result =
            as<IRawElementProviderSimple>(fragment.Get())->GetPropertyValue(property, &m_value);
    }
    ~Property() { ::VariantClear(&m_value); }
    Property(const Property&) = delete;
    Property& operator=(const Property&) = delete;

    std::string Text() const {
        if (m_value.vt != VT_BSTR) return "";
        return detail::fromPlatform(m_value.bstrVal).value_or("?").GetString();
    }
    long Number() const { return m_value.vt == VT_I4 ? m_value.lVal : -1; }
    bool Is() const { return m_value.vt == VT_BOOL && m_value.boolVal != VARIANT_FALSE; }

    HRESULT result;

private:
    VARIANT m_value;
};

std::string nameOf(const Fragment& fragment) {
    return Property(fragment, UIA_NamePropertyId).Text();
}

struct Questions {
    Questions() : form(new SingleColLayoutMgr) {
        form.AddItem(new TextDataEntryItem("Ada", "Name"), new TextDataEntryUI(80, 20, 0, 8));
        form.AddItem(new IntegerDataEntryItem(5, "Languages"),
                     new CheckBoxItemUI("[English|eE][French|fF][other|oO]", 80));
        form.AddItem(new IntegerDataEntryItem(1, "Sex"),
                     new RadioBtnItemUI("[female|fF|1][male|mM|2]", 80));
        form.Create(CRect(0, 0, 400, 300), 7, &driver.Host());
        driver.Pump();
        const ComPointer<IRawElementProviderSimple> provider(
            detail::makeProvider(platformWindow(form)));
        root = as<IRawElementProviderFragment>(provider.Get());
    }

    Win32Driver driver;
    DataEntryCtl form;
    Fragment root;
};

TEST(Win32Accessible, PartsAreATree) {
    Questions questions;
    ASSERT_TRUE(questions.root);
    EXPECT_EQ(Property(questions.root, UIA_ControlTypePropertyId).Number(), cGroup);
    const std::vector<Fragment> items = childrenOf(questions.root);
    ASSERT_EQ(items.size(), 3u);
    EXPECT_EQ(nameOf(items[0]), "Name");
    EXPECT_EQ(Property(items[0], UIA_ControlTypePropertyId).Number(), cEdit);
    EXPECT_EQ(nameOf(items[1]), "Languages");
    const std::vector<Fragment> choices = childrenOf(items[1]);
    ASSERT_EQ(choices.size(), 3u);
    EXPECT_EQ(nameOf(choices[1]), "French");
    EXPECT_EQ(Property(choices[1], UIA_ControlTypePropertyId).Number(), cCheckBox);
    EXPECT_TRUE(childrenOf(choices[1]).empty());
    EXPECT_EQ(nameOf(step(choices[1], NavigateDirection_Parent)), "Languages");
    EXPECT_EQ(nameOf(step(choices[1], NavigateDirection_PreviousSibling)), "English");
    EXPECT_EQ(nameOf(step(items[1], NavigateDirection_LastChild)), "other");
    EXPECT_EQ(Property(childrenOf(items[2])[0], UIA_ControlTypePropertyId).Number(), cRadioButton);
    EXPECT_FALSE(step(questions.root, NavigateDirection_Parent)) << "the platform's";
}

TEST(Win32Accessible, StatesAndValues) {
    Questions questions;
    questions.form.SetReadOnlyItem(0, 1);
    const std::vector<Fragment> items = childrenOf(questions.root);
    const auto value = patternOf<detail::ValuePattern>(items[0], cValue);
    ASSERT_TRUE(value);
    BSTR text = nullptr;
    EXPECT_EQ(value->get_Value(&text), S_OK);
    EXPECT_EQ(std::wstring(text), L"Ada");
    ::SysFreeString(text);
    BOOL isReadOnly = FALSE;
    EXPECT_EQ(value->get_IsReadOnly(&isReadOnly), S_OK);
    EXPECT_EQ(isReadOnly, TRUE);
    EXPECT_NE(value->SetValue(L"Eve"), S_OK);
    EXPECT_FALSE(Property(items[1], UIA_HasKeyboardFocusPropertyId).Is());
    questions.form.SetFocus();
    questions.form.SetCurrItem(1);
    questions.driver.Pump();
    EXPECT_TRUE(Property(items[1], UIA_HasKeyboardFocusPropertyId).Is());
    EXPECT_TRUE(Property(items[1], UIA_IsEnabledPropertyId).Is());
}

TEST(Win32Accessible, ChoicesCanBeMade) {
    Questions questions;
    const std::vector<Fragment> items = childrenOf(questions.root);
    const std::vector<Fragment> languages = childrenOf(items[1]);
    const auto french = patternOf<detail::TogglePattern>(languages[1], cToggle);
    ASSERT_TRUE(french);
    int state = -1;
    EXPECT_EQ(french->get_ToggleState(&state), S_OK);
    EXPECT_EQ(state, 0);
    EXPECT_EQ(french->Toggle(), S_OK);
    EXPECT_EQ(french->get_ToggleState(&state), S_OK);
    EXPECT_EQ(state, 1);
    EXPECT_EQ(questions.form.GetCurrItemIdx(), 1);
    const std::vector<Fragment> sexes = childrenOf(items[2]);
    const auto male = patternOf<detail::SelectionItemPattern>(sexes[1], cSelectionItem);
    ASSERT_TRUE(male);
    EXPECT_EQ(male->Select(), S_OK);
    BOOL isSelected = FALSE;
    EXPECT_EQ(male->get_IsSelected(&isSelected), S_OK);
    EXPECT_EQ(isSelected, TRUE);
    EXPECT_FALSE(patternOf<detail::TogglePattern>(sexes[1], cToggle));
    EXPECT_FALSE(patternOf<detail::SelectionItemPattern>(languages[1], cSelectionItem));
    const auto name = patternOf<detail::InvokePattern>(items[0], cInvoke);
    EXPECT_EQ(name->Invoke(), S_OK);
    EXPECT_EQ(questions.form.GetCurrItemIdx(), 0);
}

TEST(Win32Accessible, PartsAreFoundWhereTheyAre) {
    Questions questions;
    const auto root = as<IRawElementProviderFragmentRoot>(questions.root.Get());
    ASSERT_TRUE(root);
    const std::vector<Fragment> items = childrenOf(questions.root);
    for (const Fragment& item : items) {
        UiaRect place = {};
        EXPECT_EQ(item->get_BoundingRectangle(&place), S_OK);
        ASSERT_GT(place.width, 0);
        Fragment found;
        root->ElementProviderFromPoint(place.left + 2, place.top + 2, found.Place());
        ASSERT_TRUE(found);
        EXPECT_EQ(nameOf(found), nameOf(item));
    }
    const Fragment french = step(childrenOf(items[1])[0], NavigateDirection_NextSibling);
    UiaRect place = {};
    french->get_BoundingRectangle(&place);
    Fragment found;
    root->ElementProviderFromPoint(place.left + 4, place.top + 4, found.Place());
    EXPECT_EQ(nameOf(found), "French");
    questions.form.SetFocus();
    questions.form.SetCurrItem(2);
    Fragment focused;
    EXPECT_EQ(root->GetFocus(focused.Place()), S_OK);
    ASSERT_TRUE(focused);
    EXPECT_TRUE(nameOf(focused) == "Sex" || nameOf(focused) == "female");
}

TEST(Win32Accessible, EveryPartHasANumberOfItsOwn) {
    Questions questions;
    std::vector<std::vector<LONG>> known;
    const auto note = [&](const Fragment& fragment) {
        SAFEARRAY* numbers = nullptr;
        ASSERT_EQ(fragment->GetRuntimeId(&numbers), S_OK);
        ASSERT_NE(numbers, nullptr);
        std::vector<LONG> id;
        for (LONG i = 0; i < 3; ++i) {
            LONG number = 0;
            ::SafeArrayGetElement(numbers, &i, &number);
            id.push_back(number);
        }
        ::SafeArrayDestroy(numbers);
        EXPECT_EQ(std::count(known.begin(), known.end(), id), 0);
        known.push_back(id);
    };
    for (const Fragment& item : childrenOf(questions.root)) {
        note(item);
        for (const Fragment& choice : childrenOf(item)) note(choice);
    }
    EXPECT_EQ(known.size(), 8u);
}

TEST(Win32Accessible, QuestionsOfOtherThreadsAreAnsweredInThatOfTheWindow) {
    Questions questions;
    std::string name;
    std::atomic<bool> isDone = false;
    std::thread reader([&] {
        name = nameOf(childrenOf(questions.root)[1]);
        isDone = true;
        ::PostThreadMessageW(0, WM_NULL, 0, 0);
    });
    while (!isDone) questions.driver.Pump();
    reader.join();
    EXPECT_EQ(name, "Languages");
}

TEST(Win32Accessible, WhatIsGoneSaysSo) {
    auto questions = std::make_unique<Questions>();
    const std::vector<Fragment> items = childrenOf(questions->root);
    const Fragment choice = step(items[1], NavigateDirection_FirstChild);
    questions->form.DestroyWindow();
    for (const Fragment* fragment : {&items[0], &choice}) {
        Fragment next;
        UiaRect place = {};
        EXPECT_EQ((*fragment)->Navigate(NavigateDirection_Parent, next.Place()), detail::cNotThere);
        EXPECT_EQ((*fragment)->get_BoundingRectangle(&place), detail::cNotThere);
        EXPECT_EQ((*fragment)->SetFocus(), detail::cNotThere);
        EXPECT_EQ(Property(*fragment, UIA_NamePropertyId).result, detail::cNotThere);
    }
}

// Who asks the window itself gets an answer, whatever the platform makes of it.
TEST(Win32Accessible, WindowsAnswerWhatTheyAreAsked) {
    Questions questions;
    const HWND window = platformWindow(questions.form);
    ::SendMessageW(window, WM_GETOBJECT, 0, detail::cRootObject);
    ::SendMessageW(window, WM_GETOBJECT, 0, static_cast<LPARAM>(OBJID_CLIENT));
    // A stranger's message with the number of ours does nothing.
    EXPECT_EQ(::SendMessageW(window, detail::cCallFunction, 1, 0x1234), 0);
    EXPECT_EQ(childrenOf(questions.root).size(), 3u);
}

}  // namespace
}  // namespace tessalink::test
