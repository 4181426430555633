#pragma once

#include <QString>

namespace tessalink::desk {

/// Makes a file of twelve invented cases, of the questionnaires bigfive and interpersonal in a
/// folder; the same cases every time. CaseStoreError (a file that is there stays), and what reading
/// the questionnaires throws, pass through.
void makeSample(const QString& path, const QString& instruments);

}  // namespace tessalink::desk
