#pragma once

#include "platform/base/CArray.h"

/// An array of bytes. In an archive: the count, then the bytes.
class TESSALINK_API CByteArray : public CArray<BYTE, BYTE> {
    DECLARE_SERIAL(CByteArray)
};
