#include "apps/desk/windows/StoreTexts.h"

#include <QCoreApplication>
#include <map>

#include "apps/desk/windows/DeskText.h"

namespace tessalink::desk {

namespace {

constexpr const char* cContext = "StoreTexts";

using Kind = CaseStoreError::Kind;
using Reason = CaseStore::Reason;

// What each kind is called where there is a translation.
const std::map<Kind, const char*> cFaults = {
    {Kind::NotFound,
     QT_TRANSLATE_NOOP("StoreTexts",
                       "%1: There is no such file. Look whether it was moved or its "
                       "share is connected.")},
    {Kind::Exists, QT_TRANSLATE_NOOP("StoreTexts",
                                     "%1: There is a file of this name. Choose "
                                     "another name, or open it.")},
    {Kind::NotACaseFile,
     QT_TRANSLATE_NOOP("StoreTexts",
                       "%1 is no file of cases, or its first page is destroyed. Open "
                       "another file, or take your latest backup.")},
    {Kind::NewerVersion, QT_TRANSLATE_NOOP("StoreTexts",
                                           "%1 was written by a newer version of this "
                                           "program. Install that version.")},
    {Kind::OlderVersion,
     QT_TRANSLATE_NOOP("StoreTexts",
                       "%1 was written by an older version of this program and has to "
                       "be brought up to date, but can't be written now. Open it "
                       "where it can be, or close the other desk first.")},
    {Kind::Damaged, QT_TRANSLATE_NOOP("StoreTexts",
                                      "%1: What was asked for is damaged and can't be "
                                      "read. Take your latest backup.")},
    {Kind::NoQuestionnaire,
     QT_TRANSLATE_NOOP("StoreTexts",
                       "%1: The file has no copy of the questionnaire. Choose its "
                       "folder.")},
    {Kind::Busy, QT_TRANSLATE_NOOP("StoreTexts",
                                   "%1: Another program uses the file. Close it there, "
                                   "then open it again.")},
    {Kind::DiskFull, QT_TRANSLATE_NOOP("StoreTexts",
                                       "%1: The disk is full. Nothing keyed before is "
                                       "lost; make room, then key the last value "
                                       "again.")},
    {Kind::ReadOnly, QT_TRANSLATE_NOOP("StoreTexts",
                                       "%1: The file can't be written. Nothing keyed "
                                       "before is lost; make it writable, then open "
                                       "it again.")},
    {Kind::Vanished,
     QT_TRANSLATE_NOOP("StoreTexts",
                       "%1: The file is no longer there. What was keyed before is in "
                       "it: bring it or its share back, then open it again.")},
    {Kind::NoSuchCase, QT_TRANSLATE_NOOP("StoreTexts",
                                         "%1: The case was deleted. Read the list "
                                         "again.")},
    {Kind::FileTrouble,
     QT_TRANSLATE_NOOP("StoreTexts",
                       "%1: The system can't read or write the file. Nothing keyed "
                       "before is lost; check the disk, then open it again.")},
};

const std::map<Reason, const char*> cReasons = {
    {Reason::OtherDesk,
     QT_TRANSLATE_NOOP("StoreTexts",
                       "Another desk writes into this file: it is open for reading. "
                       "Read the list anew to see what the other one has kept.")},
    {Reason::NotWritable,
     QT_TRANSLATE_NOOP("StoreTexts",
                       "The file can't be written: it is open for reading. See to the "
                       "rights and the room of its folder, then open it again.")},
    {Reason::Damaged,
     QT_TRANSLATE_NOOP("StoreTexts",
                       "The file is damaged: what can be read of it is shown. Save a "
                       "copy of the file, which is a sound one, and go on with that.")},
};

/// The translation of a text; the message itself where there is none.
template <class Key>
QString translated(const std::map<Key, const char*>& texts, Key key, const std::string& message) {
    const auto found = texts.find(key);
    if (found == texts.end()) return shown(std::string_view(message));
    const QString text = QCoreApplication::translate(cContext, found->second);
    const bool isTranslated = text != QLatin1String(found->second);
    return isTranslated ? text : shown(std::string_view(message));
}

}  // namespace

QString storeFaultText(const CaseStoreError& error) {
    const QString text = translated(cFaults, error.GetKind(), error.what());
    return text.contains("%1") ? text.arg(shown(std::string_view(error.GetPath()))) : text;
}

QString noticeText(const CaseStore::Notice& notice) {
    return translated(cReasons, notice.reason, notice.text);
}

}  // namespace tessalink::desk
