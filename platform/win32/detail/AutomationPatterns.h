#pragma once

#include "platform/base/Types.h"

// Behind the platform's first header, which these need.
#include <objbase.h>
#include <oleauto.h>
#include <uiautomationclient.h>
#include <uiautomationcore.h>

// What a part of a window can do, as UI Automation asks for it: the interfaces that not all headers
// of the platform have.
namespace tessalink::detail {

// Some versions of the header with these are no C++.
inline constexpr LONG cAppendedId = 3;
inline constexpr LONG cRootObject = -25;
inline constexpr HRESULT cNotThere = static_cast<HRESULT>(0x80040201);
inline constexpr HRESULT cNotPossible = static_cast<HRESULT>(0x80131509);

// IInvokeProvider.
struct InvokePattern : public IUnknown {
    static constexpr GUID cId = {
        0x54fcb24b, 0xe18e, 0x47a2, {0xb4, 0xd3, 0xec, 0xcb, 0xe7, 0x75, 0x99, 0xa2}};
    virtual HRESULT STDMETHODCALLTYPE Invoke() = 0;
};

// IToggleProvider.
struct TogglePattern : public IUnknown {
    static constexpr GUID cId = {
        0x56d00bd0, 0xc4f4, 0x433c, {0xa8, 0x36, 0x1a, 0x52, 0xa5, 0x7e, 0x08, 0x92}};
    virtual HRESULT STDMETHODCALLTYPE Toggle() = 0;
    virtual HRESULT STDMETHODCALLTYPE get_ToggleState(int* state) = 0;
};

// ISelectionItemProvider.
struct SelectionItemPattern : public IUnknown {
    static constexpr GUID cId = {
        0x2acad808, 0xb2d4, 0x452d, {0xa4, 0x07, 0x91, 0xff, 0x1a, 0xd1, 0x67, 0xb2}};
    virtual HRESULT STDMETHODCALLTYPE Select() = 0;
    virtual HRESULT STDMETHODCALLTYPE AddToSelection() = 0;
    virtual HRESULT STDMETHODCALLTYPE RemoveFromSelection() = 0;
    virtual HRESULT STDMETHODCALLTYPE get_IsSelected(BOOL* isSelected) = 0;
    virtual HRESULT STDMETHODCALLTYPE
    get_SelectionContainer(IRawElementProviderSimple** container) = 0;
};

// IValueProvider.
struct ValuePattern : public IUnknown {
    static constexpr GUID cId = {
        0xc7935180, 0x6fb3, 0x4201, {0xb1, 0x74, 0x7d, 0xf7, 0x3a, 0xdb, 0xf6, 0x4a}};
    virtual HRESULT STDMETHODCALLTYPE SetValue(LPCWSTR value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_Value(BSTR* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_IsReadOnly(BOOL* isReadOnly) = 0;
};

}  // namespace tessalink::detail
