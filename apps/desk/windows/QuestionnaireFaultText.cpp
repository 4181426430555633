#include "apps/desk/windows/QuestionnaireFaultText.h"

#include <QStringList>

#include "apps/desk/windows/DeskText.h"

namespace tessalink::desk {

QString faultText(const QuestionnaireFaults& faults) {
    QStringList lines;
    for (const InputError& fault : faults.GetFaults()) {
        const TextPlace& place = fault.GetPlace();
        QString line = shown(place.file);
        if (place.IsKnown()) line += QString(":%1:%2").arg(place.line).arg(place.column);
        lines.append(line + ": " + messageOf(fault));
    }
    return lines.join('\n');
}

}  // namespace tessalink::desk
