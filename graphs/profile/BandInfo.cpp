#include "graphs/profile/BandInfo.h"

#include "platform/files/CArchive.h"

void BandInfo::Serialize(CArchive& archive) {
    if (archive.IsStoring()) {
        archive << from << to << color;
    } else {
        archive >> from >> to >> color;
    }
}
