#pragma once

#include "platform/base/CArray.h"

/// An array of texts. In an archive: the count, then each text in its archive form.
class TESSALINK_API CStringArray : public CArray<CString, const CString&> {
    DECLARE_SERIAL(CStringArray)
};
