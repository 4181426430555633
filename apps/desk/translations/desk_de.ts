<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE" sourcelanguage="en">
    <context>
        <name>FieldRules</name>
        <message numerus="yes">
            <source>%1: at most %n character(s).</source>
            <translation>
                <numerusform>%1: höchstens %n Zeichen.</numerusform>
                <numerusform>%1: höchstens %n Zeichen.</numerusform>
            </translation>
        </message>
        <message>
            <source>%1: a whole number from %2 to %3.</source>
            <translation>%1: eine ganze Zahl von %2 bis %3.</translation>
        </message>
        <message>
            <source>%1: a number from %2 to %3.</source>
            <translation>%1: eine Zahl von %2 bis %3.</translation>
        </message>
        <message>
            <source>%1: a date, for instance %2.</source>
            <translation>%1: ein Datum, zum Beispiel %2.</translation>
        </message>
        <message>
            <source>%1: a time of day, for instance 14:05.</source>
            <translation>%1: eine Uhrzeit, zum Beispiel 14:05.</translation>
        </message>
        <message>
            <source>%1: one of the choices.</source>
            <translation>%1: eine der Möglichkeiten.</translation>
        </message>
    </context>
    <context>
        <name>tessalink::desk</name>
        <message>
            <source>%1 can't be written (%2): choose another name or folder.</source>
            <translation>%1 kann nicht geschrieben werden (%2): Wählen Sie einen anderen Namen oder Ordner.</translation>
        </message>
    </context>
    <context>
        <name>tessalink::desk::AnswerSheet</name>
        <message>
            <source>Answers</source>
            <translation>Antworten</translation>
        </message>
        <message>
            <source>Answers in numbers</source>
            <translation>Antworten in Zahlen</translation>
        </message>
        <message numerus="yes">
            <source>Second keying complete: %1 answers, %n corrected.</source>
            <translation>
                <numerusform>Zweiteingabe vollständig: %1 Antworten, %n korrigiert.</numerusform>
                <numerusform>Zweiteingabe vollständig: %1 Antworten, %n korrigiert.</numerusform>
            </translation>
        </message>
        <message>
            <source>A whole number from %1 to %2</source>
            <translation>Eine ganze Zahl von %1 bis %2</translation>
        </message>
        <message>
            <source>Another answer than the first one: Backspace, then the right one.</source>
            <translation>Eine andere Antwort als die erste: Rücktaste, dann die richtige.</translation>
        </message>
        <message numerus="yes">
            <source>Second keying: %1 of %2, %n corrected.</source>
            <translation>
                <numerusform>Zweiteingabe: %1 von %2, %n korrigiert.</numerusform>
                <numerusform>Zweiteingabe: %1 von %2, %n korrigiert.</numerusform>
            </translation>
        </message>
        <message>
            <source>%1 of %2 answered, %3 missing.</source>
            <translation>%1 von %2 beantwortet, %3 fehlen.</translation>
        </message>
    </context>
    <context>
        <name>tessalink::desk::BatchDialog</name>
        <message>
            <source>As &amp;PDF</source>
            <translation>Als &amp;PDF</translation>
        </message>
        <message>
            <source>&amp;Start</source>
            <translation>&amp;Starten</translation>
        </message>
        <message>
            <source>S&amp;top</source>
            <translation>A&amp;nhalten</translation>
        </message>
        <message numerus="yes">
            <source>Reports of %n case(s)</source>
            <translation>
                <numerusform>Berichte von %n Fall</numerusform>
                <numerusform>Berichte von %n Fällen</numerusform>
            </translation>
        </message>
        <message>
            <source>Folder</source>
            <translation>Ordner</translation>
        </message>
        <message>
            <source>Progress</source>
            <translation>Fortschritt</translation>
        </message>
        <message>
            <source>Outcome</source>
            <translation>Ergebnis</translation>
        </message>
        <message>
            <source>&amp;Choose...</source>
            <translation>Aus&amp;wählen...</translation>
        </message>
        <message>
            <source>&amp;Report:</source>
            <translation>&amp;Bericht:</translation>
        </message>
        <message>
            <source>&amp;Folder:</source>
            <translation>&amp;Ordner:</translation>
        </message>
        <message>
            <source>Folder for the reports</source>
            <translation>Ordner für die Berichte</translation>
        </message>
        <message>
            <source>Choose a folder for the reports that can be written to.</source>
            <translation>Wählen Sie einen Ordner für die Berichte, in den geschrieben werden kann.</translation>
        </message>
        <message numerus="yes">
            <source>Stopped. %n report(s) are in the folder.</source>
            <translation>
                <numerusform>Angehalten. %n Bericht ist im Ordner.</numerusform>
                <numerusform>Angehalten. %n Berichte sind im Ordner.</numerusform>
            </translation>
        </message>
        <message numerus="yes">
            <source>%n report(s) are in the folder.</source>
            <translation>
                <numerusform>%n Bericht ist im Ordner.</numerusform>
                <numerusform>%n Berichte sind im Ordner.</numerusform>
            </translation>
        </message>
        <message>
            <source>LibreOffice has made no pages of this report.</source>
            <translation>LibreOffice hat von diesem Bericht keine Seiten erzeugt.</translation>
        </message>
    </context>
    <context>
        <name>tessalink::desk::CaseListModel</name>
        <message>
            <source>Id</source>
            <translation>Kennung</translation>
        </message>
        <message>
            <source>Questionnaire</source>
            <translation>Fragebogen</translation>
        </message>
        <message>
            <source>State</source>
            <translation>Zustand</translation>
        </message>
        <message>
            <source>Created</source>
            <translation>Angelegt</translation>
        </message>
        <message>
            <source>Changed</source>
            <translation>Geändert</translation>
        </message>
        <message>
            <source>Answers</source>
            <translation>Antworten</translation>
        </message>
        <message>
            <source>open</source>
            <translation>offen</translation>
        </message>
        <message>
            <source>complete</source>
            <translation>abgeschlossen</translation>
        </message>
    </context>
    <context>
        <name>tessalink::desk::CaseListPage</name>
        <message>
            <source>Words of the id or the questionnaire</source>
            <translation>Wörter der Kennung oder des Fragebogens</translation>
        </message>
        <message>
            <source>Questionnaires shown</source>
            <translation>Gezeigte Fragebögen</translation>
        </message>
        <message>
            <source>States shown</source>
            <translation>Gezeigte Zustände</translation>
        </message>
        <message>
            <source>Open and complete</source>
            <translation>Offen und abgeschlossen</translation>
        </message>
        <message>
            <source>Open</source>
            <translation>Offen</translation>
        </message>
        <message>
            <source>Complete</source>
            <translation>Abgeschlossen</translation>
        </message>
        <message>
            <source>&amp;Search:</source>
            <translation>&amp;Suchen:</translation>
        </message>
        <message>
            <source>Cases</source>
            <translation>Fälle</translation>
        </message>
        <message>
            <source>All questionnaires</source>
            <translation>Alle Fragebögen</translation>
        </message>
        <message>
            <source>There are no cases yet. Case &gt; New case begins one.</source>
            <translation>Es gibt noch keine Fälle. Fall &gt; Neuer Fall beginnt einen.</translation>
        </message>
        <message>
            <source>%1 of %2 cases</source>
            <translation>%1 von %2 Fällen</translation>
        </message>
    </context>
    <context>
        <name>tessalink::desk::CasePage</name>
        <message>
            <source>%1 = %2 stays in the file and is not shown: %3.</source>
            <translation>%1 = %2 bleibt in der Datei und wird nicht gezeigt: %3.</translation>
        </message>
        <message>
            <source>%1 has letters that the form can't show. They are kept, printed and exported, but can't be changed here.</source>
            <translation>%1 hat Buchstaben, die das Formular nicht zeigen kann. Sie bleiben erhalten, werden gedruckt und exportiert, können hier aber nicht geändert werden.</translation>
        </message>
        <message>
            <source>This was not kept: %1</source>
            <translation>Das wurde nicht gespeichert: %1</translation>
        </message>
        <message>
            <source>answer to %1</source>
            <translation>Antwort auf %1</translation>
        </message>
        <message>
            <source>second answer to %1</source>
            <translation>zweite Antwort auf %1</translation>
        </message>
        <message>
            <source>id</source>
            <translation>Kennung</translation>
        </message>
        <message>
            <source>state of the case</source>
            <translation>Zustand des Falls</translation>
        </message>
        <message>
            <source>open</source>
            <translation>offen</translation>
        </message>
        <message>
            <source>complete</source>
            <translation>abgeschlossen</translation>
        </message>
        <message>
            <source>%1: %2 %3, %4</source>
            <comment>id: questionnaire version, state</comment>
            <translation>%1: %2 %3, %4</translation>
        </message>
        <message numerus="yes">
            <source>%n answer(s) differ between both keyings</source>
            <translation>
                <numerusform>%n Antwort unterscheidet sich zwischen beiden Eingaben</numerusform>
                <numerusform>%n Antworten unterscheiden sich zwischen beiden Eingaben</numerusform>
            </translation>
        </message>
    </context>
    <context>
        <name>tessalink::desk::DataActions</name>
        <message>
            <source>&amp;Show the report</source>
            <translation>Bericht &amp;zeigen</translation>
        </message>
        <message>
            <source>Ctrl+R</source>
            <translation>Ctrl+R</translation>
        </message>
        <message>
            <source>Reports of se&amp;veral cases...</source>
            <translation>Berichte &amp;mehrerer Fälle...</translation>
        </message>
        <message>
            <source>Ctrl+Shift+R</source>
            <translation>Ctrl+Shift+R</translation>
        </message>
        <message>
            <source>&amp;Import responses...</source>
            <translation>Antworten &amp;importieren...</translation>
        </message>
        <message>
            <source>Ctrl+I</source>
            <translation>Ctrl+I</translation>
        </message>
        <message>
            <source>Export &amp;scores...</source>
            <translation>&amp;Werte exportieren...</translation>
        </message>
        <message>
            <source>Ctrl+E</source>
            <translation>Ctrl+E</translation>
        </message>
        <message>
            <source>Export this case as &amp;FHIR...</source>
            <translation>Diesen Fall als &amp;FHIR exportieren...</translation>
        </message>
        <message>
            <source>Save a &amp;copy of the file...</source>
            <translation>&amp;Kopie der Datei speichern...</translation>
        </message>
        <message>
            <source>There are no cases to choose from.</source>
            <translation>Es gibt keine Fälle zur Auswahl.</translation>
        </message>
        <message>
            <source>The cases have several questionnaires: choose one in the list first.</source>
            <translation>Die Fälle haben verschiedene Fragebögen: Wählen Sie zuerst einen in der Liste.</translation>
        </message>
        <message>
            <source>Import responses</source>
            <translation>Antworten importieren</translation>
        </message>
        <message>
            <source>Tables of responses and FHIR resources (*.csv *.txt *.tsv *.json *.ndjson);;All files (*)</source>
            <translation>Antworttabellen und FHIR-Ressourcen (*.csv *.txt *.tsv *.json *.ndjson);;Alle Dateien (*)</translation>
        </message>
        <message>
            <source>Export scores</source>
            <translation>Werte exportieren</translation>
        </message>
        <message>
            <source>Tables (*.csv)</source>
            <translation>Tabellen (*.csv)</translation>
        </message>
        <message numerus="yes">
            <source>The scores of %n case(s) are in %1.</source>
            <translation>
                <numerusform>Die Werte von %n Fall sind in %1.</numerusform>
                <numerusform>Die Werte von %n Fällen sind in %1.</numerusform>
            </translation>
        </message>
        <message>
            <source>Left out of %1:</source>
            <translation>Nicht in %1:</translation>
        </message>
        <message>
            <source>Export the case</source>
            <translation>Fall exportieren</translation>
        </message>
        <message>
            <source>FHIR (*.json)</source>
            <translation>FHIR (*.json)</translation>
        </message>
        <message>
            <source>The case is in %1.</source>
            <translation>Der Fall ist in %1.</translation>
        </message>
        <message>
            <source>Save a copy of the file</source>
            <translation>Kopie der Datei speichern</translation>
        </message>
        <message>
            <source>Files of cases (*.cases)</source>
            <translation>Falldateien (*.cases)</translation>
        </message>
        <message>
            <source>This is the file itself: choose another name for the copy.</source>
            <translation>Das ist die Datei selbst: Wählen Sie einen anderen Namen für die Kopie.</translation>
        </message>
        <message>
            <source>The copy is in %1.</source>
            <translation>Die Kopie ist in %1.</translation>
        </message>
        <message>
            <source>The copy is in %1. It lacks what can't be read:</source>
            <translation>Die Kopie ist in %1. Es fehlt, was nicht gelesen werden kann:</translation>
        </message>
    </context>
    <context>
        <name>tessalink::desk::FieldForm</name>
        <message>
            <source>Id</source>
            <translation>Kennung</translation>
        </message>
        <message>
            <source>The person's form</source>
            <translation>Personenformular</translation>
        </message>
        <message>
            <source>The id names files: 1 to %1 characters, none of / \ &lt; &gt; : " | ? *, no blank or full stop at its ends.</source>
            <translation>Die Kennung benennt Dateien: 1 bis %1 Zeichen, keines von / \ &lt; &gt; : " | ? *, kein Leerzeichen oder Punkt am Anfang oder Ende.</translation>
        </message>
    </context>
    <context>
        <name>tessalink::desk::ImportDialog</name>
        <message>
            <source>Numbers have a decimal &amp;comma</source>
            <translation>Zahlen haben ein Dezimal&amp;komma</translation>
        </message>
        <message>
            <source>Cells hold &amp;labels instead of codes</source>
            <translation>Zellen enthalten &amp;Beschriftungen statt Codes</translation>
        </message>
        <message>
            <source>Import responses</source>
            <translation>Antworten importieren</translation>
        </message>
        <message>
            <source>for instance 9 99</source>
            <translation>zum Beispiel 9 99</translation>
        </message>
        <message>
            <source>Outcome</source>
            <translation>Ergebnis</translation>
        </message>
        <message>
            <source>File:</source>
            <translation>Datei:</translation>
        </message>
        <message>
            <source>&amp;Questionnaire:</source>
            <translation>Frage&amp;bogen:</translation>
        </message>
        <message>
            <source>Codes for &amp;missing answers:</source>
            <translation>Codes für &amp;fehlende Antworten:</translation>
        </message>
        <message>
            <source>&amp;Import</source>
            <translation>&amp;Importieren</translation>
        </message>
        <message>
            <source>Choose the folder of a questionnaire.</source>
            <translation>Wählen Sie den Ordner eines Fragebogens.</translation>
        </message>
        <message>
            <source>%1
What was taken before is in the file; import once more to go on.</source>
            <translation>%1
Was vorher übernommen wurde, ist in der Datei; importieren Sie noch einmal, um fortzufahren.</translation>
        </message>
        <message numerus="yes">
            <source>%n case(s) added.</source>
            <translation>
                <numerusform>%n Fall hinzugefügt.</numerusform>
                <numerusform>%n Fälle hinzugefügt.</numerusform>
            </translation>
        </message>
        <message numerus="yes">
            <source>%n row(s) left out:</source>
            <translation>
                <numerusform>%n Zeile ausgelassen:</numerusform>
                <numerusform>%n Zeilen ausgelassen:</numerusform>
            </translation>
        </message>
        <message>
            <source>Line %1: %2 %3</source>
            <translation>Zeile %1: %2 %3</translation>
        </message>
        <message>
            <source>... and further ones.</source>
            <translation>... und weitere.</translation>
        </message>
    </context>
    <context>
        <name>tessalink::desk::MainWindow</name>
        <message>
            <source>New file of cases...</source>
            <translation>Neue Falldatei...</translation>
        </message>
        <message>
            <source>Open a file of cases...</source>
            <translation>Falldatei öffnen...</translation>
        </message>
        <message>
            <source>%1

Close all the same?</source>
            <translation>%1

Trotzdem schließen?</translation>
        </message>
        <message>
            <source>Not on the disk yet</source>
            <translation>Noch nicht auf dem Datenträger</translation>
        </message>
        <message>
            <source>Case &gt; Score by another version takes it from a folder.</source>
            <translation>Fall &gt; Nach anderer Fassung auswerten nimmt ihn aus einem Ordner.</translation>
        </message>
        <message>
            <source>&amp;New file of cases...</source>
            <translation>&amp;Neue Falldatei...</translation>
        </message>
        <message>
            <source>&amp;Open a file of cases...</source>
            <translation>Falldatei &amp;öffnen...</translation>
        </message>
        <message>
            <source>Your &amp;initials...</source>
            <translation>Ihr &amp;Kürzel...</translation>
        </message>
        <message>
            <source>&amp;Close the file</source>
            <translation>Datei &amp;schließen</translation>
        </message>
        <message>
            <source>&amp;Quit</source>
            <translation>&amp;Beenden</translation>
        </message>
        <message>
            <source>&amp;File</source>
            <translation>&amp;Datei</translation>
        </message>
        <message>
            <source>&amp;Recent files</source>
            <translation>&amp;Zuletzt geöffnet</translation>
        </message>
        <message>
            <source>&amp;Undo</source>
            <translation>&amp;Rückgängig</translation>
        </message>
        <message>
            <source>&amp;Redo</source>
            <translation>&amp;Wiederholen</translation>
        </message>
        <message>
            <source>&amp;Find a case</source>
            <translation>Fall &amp;suchen</translation>
        </message>
        <message>
            <source>&amp;Second keying</source>
            <translation>&amp;Zweiteingabe</translation>
        </message>
        <message>
            <source>&amp;End the second keying</source>
            <translation>Zweiteingabe &amp;beenden</translation>
        </message>
        <message>
            <source>&amp;Edit</source>
            <translation>&amp;Bearbeiten</translation>
        </message>
        <message>
            <source>&amp;New case...</source>
            <translation>&amp;Neuer Fall...</translation>
        </message>
        <message>
            <source>&amp;Open the case</source>
            <translation>Fall &amp;öffnen</translation>
        </message>
        <message>
            <source>Back to the &amp;list</source>
            <translation>Zurück zur &amp;Liste</translation>
        </message>
        <message>
            <source>Ne&amp;xt case</source>
            <translation>Nä&amp;chster Fall</translation>
        </message>
        <message>
            <source>&amp;Previous case</source>
            <translation>&amp;Voriger Fall</translation>
        </message>
        <message>
            <source>The case is &amp;complete</source>
            <translation>Fall ist &amp;abgeschlossen</translation>
        </message>
        <message>
            <source>Score by another &amp;version...</source>
            <translation>Nach anderer &amp;Fassung auswerten...</translation>
        </message>
        <message>
            <source>&amp;Trail...</source>
            <translation>&amp;Protokoll...</translation>
        </message>
        <message>
            <source>&amp;Delete...</source>
            <translation>Lösc&amp;hen...</translation>
        </message>
        <message>
            <source>&amp;Case</source>
            <translation>&amp;Fall</translation>
        </message>
        <message>
            <source>The person's &amp;form</source>
            <translation>&amp;Personenformular</translation>
        </message>
        <message>
            <source>The &amp;answers</source>
            <translation>&amp;Antworten</translation>
        </message>
        <message>
            <source>&amp;Next part of the window</source>
            <translation>&amp;Nächster Teil des Fensters</translation>
        </message>
        <message>
            <source>&amp;Previous part of the window</source>
            <translation>&amp;Voriger Teil des Fensters</translation>
        </message>
        <message>
            <source>&amp;Read the list anew</source>
            <translation>Liste neu &amp;einlesen</translation>
        </message>
        <message>
            <source>&amp;View</source>
            <translation>&amp;Ansicht</translation>
        </message>
        <message>
            <source>&amp;Report</source>
            <translation>B&amp;ericht</translation>
        </message>
        <message>
            <source>&amp;Data</source>
            <translation>Da&amp;ten</translation>
        </message>
        <message>
            <source>&amp;About this program</source>
            <translation>Ü&amp;ber dieses Programm</translation>
        </message>
        <message>
            <source>&amp;Help</source>
            <translation>&amp;Hilfe</translation>
        </message>
        <message>
            <source>Tool bar</source>
            <translation>Werkzeugleiste</translation>
        </message>
        <message>
            <source>Tessalink Desk</source>
            <translation>Tessalink Desk</translation>
        </message>
        <message>
            <source>Read-only</source>
            <translation>Nur lesbar</translation>
        </message>
        <message>
            <source>New file of cases</source>
            <translation>Neue Falldatei</translation>
        </message>
        <message>
            <source>Files of cases (*.cases)</source>
            <translation>Falldateien (*.cases)</translation>
        </message>
        <message>
            <source>Open a file of cases</source>
            <translation>Falldatei öffnen</translation>
        </message>
        <message>
            <source>All files (*)</source>
            <translation>Alle Dateien (*)</translation>
        </message>
        <message>
            <source>Your initials</source>
            <translation>Ihr Kürzel</translation>
        </message>
        <message>
            <source>The trail names who has keyed. Your initials:</source>
            <translation>Das Protokoll nennt, wer eingegeben hat. Ihr Kürzel:</translation>
        </message>
        <message>
            <source>Folder of the other version</source>
            <translation>Ordner der anderen Fassung</translation>
        </message>
        <message>
            <source>Choose one case in the list first.</source>
            <translation>Wählen Sie zuerst einen Fall in der Liste.</translation>
        </message>
        <message>
            <source>%1 holds the questionnaire %2, the case is one of %3. Choose a folder of %3.</source>
            <translation>%1 enthält den Fragebogen %2, der Fall gehört zu %3. Wählen Sie einen Ordner von %3.</translation>
        </message>
        <message>
            <source>From now on the case is scored by this version; the trail says so.</source>
            <translation>Ab jetzt wird der Fall nach dieser Fassung ausgewertet; das Protokoll nennt es.</translation>
        </message>
        <message numerus="yes">
            <source>Delete %n cases?</source>
            <translation>
                <numerusform>%n Fall löschen?</numerusform>
                <numerusform>%n Fälle löschen?</numerusform>
            </translation>
        </message>
        <message>
            <source>Delete the case %1?</source>
            <translation>Den Fall %1 löschen?</translation>
        </message>
        <message>
            <source>What was keyed is erased from the file and from its trail. This can't be undone.</source>
            <translation>Was eingegeben wurde, wird aus der Datei und ihrem Protokoll getilgt. Das kann nicht rückgängig gemacht werden.</translation>
        </message>
        <message>
            <source>&amp;Delete</source>
            <translation>&amp;Löschen</translation>
        </message>
        <message>
            <source>About this program</source>
            <translation>Über dieses Programm</translation>
        </message>
        <message>
            <source>Tessalink Desk: assessments are keyed, scored and reported. Questionnaires are folders of plain files.</source>
            <translation>Tessalink Desk: Verfahren werden eingegeben, ausgewertet und berichtet. Fragebögen sind Ordner einfacher Dateien.</translation>
        </message>
    </context>
    <context>
        <name>tessalink::desk::MessageBar</name>
        <message>
            <source>Show all...</source>
            <translation>Alles zeigen...</translation>
        </message>
        <message>
            <source>Close the message</source>
            <translation>Meldung schließen</translation>
        </message>
        <message>
            <source>Message</source>
            <translation>Meldung</translation>
        </message>
    </context>
    <context>
        <name>tessalink::desk::NewCaseDialog</name>
        <message>
            <source>New case</source>
            <translation>Neuer Fall</translation>
        </message>
        <message>
            <source>Faults of the questionnaire</source>
            <translation>Fehler des Fragebogens</translation>
        </message>
        <message>
            <source>&amp;Questionnaire:</source>
            <translation>Frage&amp;bogen:</translation>
        </message>
        <message>
            <source>&amp;Id:</source>
            <translation>&amp;Kennung:</translation>
        </message>
        <message>
            <source>This folder can't be used. Mend what is listed here and choose it again:</source>
            <translation>Dieser Ordner kann nicht verwendet werden. Beheben Sie, was hier steht, und wählen Sie ihn noch einmal:</translation>
        </message>
        <message>
            <source>The file holds no questionnaire yet: choose its folder.</source>
            <translation>Die Datei enthält noch keinen Fragebogen: Wählen Sie seinen Ordner.</translation>
        </message>
        <message>
            <source>The id names files: no / \ &lt; &gt; : " | ? *, no full stop at its ends.</source>
            <translation>Die Kennung benennt Dateien: kein / \ &lt; &gt; : " | ? *, kein Punkt am Anfang oder Ende.</translation>
        </message>
        <message>
            <source>The id tells persons apart, and names the files of reports.</source>
            <translation>Die Kennung unterscheidet Personen und benennt die Dateien der Berichte.</translation>
        </message>
    </context>
    <context>
        <name>tessalink::desk::PageMaker</name>
        <message>
            <source>Pages are made by LibreOffice, which is missing: install the package libreoffice-writer.</source>
            <translation>Die Seiten macht LibreOffice, das fehlt: Installieren Sie das Paket libreoffice-writer.</translation>
        </message>
    </context>
    <context>
        <name>tessalink::desk::ProfileView</name>
        <message>
            <source>Graph</source>
            <translation>Grafik</translation>
        </message>
        <message>
            <source>This questionnaire has no graph.</source>
            <translation>Dieser Fragebogen hat keine Grafik.</translation>
        </message>
        <message>
            <source>The graph can't be drawn: %1</source>
            <translation>Die Grafik kann nicht gezeichnet werden: %1</translation>
        </message>
    </context>
    <context>
        <name>tessalink::desk::ReportDialog</name>
        <message>
            <source>Save as R&amp;TF...</source>
            <translation>Als R&amp;TF speichern...</translation>
        </message>
        <message>
            <source>Save as P&amp;DF...</source>
            <translation>Als P&amp;DF speichern...</translation>
        </message>
        <message>
            <source>&amp;Print...</source>
            <translation>D&amp;rucken...</translation>
        </message>
        <message>
            <source>&amp;Close</source>
            <translation>S&amp;chließen</translation>
        </message>
        <message>
            <source>Report of %1</source>
            <translation>Bericht über %1</translation>
        </message>
    </context>
    <context>
        <name>tessalink::desk::ReportPage</name>
        <message>
            <source>&amp;Open in another program</source>
            <translation>In anderem Programm ö&amp;ffnen</translation>
        </message>
        <message>
            <source>&amp;Report:</source>
            <translation>&amp;Bericht:</translation>
        </message>
        <message>
            <source>Report</source>
            <translation>Bericht</translation>
        </message>
        <message>
            <source>Pages of the report</source>
            <translation>Seiten des Berichts</translation>
        </message>
        <message>
            <source>This questionnaire has no report.</source>
            <translation>Dieser Fragebogen hat keinen Bericht.</translation>
        </message>
        <message>
            <source>No private folder for the pages can be made: make room in the folder of temporary files.</source>
            <translation>Für die Seiten kann kein privater Ordner angelegt werden: Schaffen Sie Platz im Ordner für temporäre Dateien.</translation>
        </message>
        <message>
            <source>The report can't be made: %1</source>
            <translation>Der Bericht kann nicht erstellt werden: %1</translation>
        </message>
        <message>
            <source>Making the pages...</source>
            <translation>Die Seiten werden erstellt...</translation>
        </message>
        <message>
            <source>LibreOffice has made no pages of the report: close it if it is open elsewhere, or open the report in another program.</source>
            <translation>LibreOffice hat keine Seiten des Berichts erzeugt: Schließen Sie es, falls es sonst geöffnet ist, oder öffnen Sie den Bericht in einem anderen Programm.</translation>
        </message>
        <message>
            <source>Saved as %1.</source>
            <translation>Gespeichert als %1.</translation>
        </message>
        <message>
            <source>Save the report as RTF</source>
            <translation>Bericht als RTF speichern</translation>
        </message>
        <message>
            <source>Save the report as PDF</source>
            <translation>Bericht als PDF speichern</translation>
        </message>
        <message>
            <source>The system has no program for RTF files: save the report and open it elsewhere.</source>
            <translation>Das System hat kein Programm für RTF-Dateien: Speichern Sie den Bericht und öffnen Sie ihn anderswo.</translation>
        </message>
        <message>
            <source>Sent to the printer.</source>
            <translation>An den Drucker gesendet.</translation>
        </message>
        <message>
            <source>The printer has not taken the pages: see whether it is on and has paper.</source>
            <translation>Der Drucker hat die Seiten nicht angenommen: Sehen Sie nach, ob er eingeschaltet ist und Papier hat.</translation>
        </message>
        <message>
            <source>The report opens in the system&apos;s program for RTF files instead.</source>
            <translation>Der Bericht öffnet sich stattdessen im Programm des Systems für RTF-Dateien.</translation>
        </message>
    </context>
    <context>
        <name>tessalink::desk::ScoresView</name>
        <message>
            <source>Answers missing</source>
            <translation>Fehlende Antworten</translation>
        </message>
        <message>
            <source>Equal answers in a row, at most</source>
            <translation>Gleiche Antworten in Folge, höchstens</translation>
        </message>
        <message>
            <source>Shares of the choices</source>
            <translation>Anteile der Möglichkeiten</translation>
        </message>
        <message>
            <source>Inconsistency</source>
            <translation>Inkonsistenz</translation>
        </message>
        <message>
            <source>%1: %2 %</source>
            <translation>%1: %2 %</translation>
        </message>
        <message>
            <source>Scores</source>
            <translation>Werte</translation>
        </message>
        <message>
            <source>Scale</source>
            <translation>Skala</translation>
        </message>
        <message>
            <source>Raw</source>
            <translation>Rohwert</translation>
        </message>
        <message>
            <source>Missing</source>
            <translation>Fehlend</translation>
        </message>
        <message>
            <source>%1 (%2 %)</source>
            <translation>%1 (%2 %)</translation>
        </message>
        <message>
            <source>, at %1 degrees</source>
            <translation>, bei %1 Grad</translation>
        </message>
    </context>
    <context>
        <name>tessalink::desk::TrailDialog</name>
        <message>
            <source>new case</source>
            <translation>neuer Fall</translation>
        </message>
        <message>
            <source>import</source>
            <translation>Import</translation>
        </message>
        <message>
            <source>answer</source>
            <translation>Antwort</translation>
        </message>
        <message>
            <source>second answer</source>
            <translation>zweite Antwort</translation>
        </message>
        <message>
            <source>form</source>
            <translation>Formular</translation>
        </message>
        <message>
            <source>id</source>
            <translation>Kennung</translation>
        </message>
        <message>
            <source>state</source>
            <translation>Zustand</translation>
        </message>
        <message>
            <source>questionnaire</source>
            <translation>Fragebogen</translation>
        </message>
        <message>
            <source>deleted</source>
            <translation>gelöscht</translation>
        </message>
        <message>
            <source>Trail</source>
            <translation>Protokoll</translation>
        </message>
        <message>
            <source>What the trail tells of</source>
            <translation>Wovon das Protokoll erzählt</translation>
        </message>
        <message>
            <source>This case</source>
            <translation>Dieser Fall</translation>
        </message>
        <message>
            <source>All cases</source>
            <translation>Alle Fälle</translation>
        </message>
        <message>
            <source>Number</source>
            <translation>Nummer</translation>
        </message>
        <message>
            <source>Case</source>
            <translation>Fall</translation>
        </message>
        <message>
            <source>When</source>
            <translation>Wann</translation>
        </message>
        <message>
            <source>Account</source>
            <translation>Konto</translation>
        </message>
        <message>
            <source>Initials</source>
            <translation>Kürzel</translation>
        </message>
        <message>
            <source>What</source>
            <translation>Was</translation>
        </message>
        <message>
            <source>Name</source>
            <translation>Name</translation>
        </message>
        <message>
            <source>From</source>
            <translation>Von</translation>
        </message>
        <message>
            <source>To</source>
            <translation>Nach</translation>
        </message>
        <message>
            <source>&amp;Export as CSV...</source>
            <translation>Als CSV &amp;exportieren...</translation>
        </message>
        <message>
            <source>The last %1 of %2 entries; the export has all.</source>
            <translation>Die letzten %1 von %2 Einträgen; der Export hat alle.</translation>
        </message>
        <message numerus="yes">
            <source>%n entries</source>
            <translation>
                <numerusform>%n Eintrag</numerusform>
                <numerusform>%n Einträge</numerusform>
            </translation>
        </message>
        <message>
            <source>Export the trail</source>
            <translation>Protokoll exportieren</translation>
        </message>
        <message>
            <source>Tables (*.csv)</source>
            <translation>Tabellen (*.csv)</translation>
        </message>
        <message>
            <source>Written: %1</source>
            <translation>Geschrieben: %1</translation>
        </message>
        <message>
            <source>Not written: %1</source>
            <translation>Nicht geschrieben: %1</translation>
        </message>
    </context>
    <context>
        <name>StoreTexts</name>
        <message>
            <source>%1: There is no such file. Look whether it was moved or its share is connected.</source>
            <translation>%1: Diese Datei gibt es nicht. Sehen Sie nach, ob sie verschoben wurde oder ihre Freigabe verbunden ist.</translation>
        </message>
        <message>
            <source>%1: There is a file of this name. Choose another name, or open it.</source>
            <translation>%1: Eine Datei dieses Namens gibt es schon. Wählen Sie einen anderen Namen, oder öffnen Sie sie.</translation>
        </message>
        <message>
            <source>%1 is no file of cases, or its first page is destroyed. Open another file, or take your latest backup.</source>
            <translation>%1 ist keine Falldatei, oder ihre erste Seite ist zerstört. Öffnen Sie eine andere Datei, oder nehmen Sie Ihre letzte Sicherung.</translation>
        </message>
        <message>
            <source>%1 was written by a newer version of this program. Install that version.</source>
            <translation>%1 wurde von einer neueren Version dieses Programms geschrieben. Installieren Sie jene Version.</translation>
        </message>
        <message>
            <source>%1 was written by an older version of this program and has to be brought up to date, but can&apos;t be written now. Open it where it can be, or close the other desk first.</source>
            <translation>%1 wurde von einer älteren Version dieses Programms geschrieben und muss erneuert werden, kann aber jetzt nicht geschrieben werden. Öffnen Sie sie, wo das geht, oder schließen Sie zuerst den anderen Arbeitsplatz.</translation>
        </message>
        <message>
            <source>%1: What was asked for is damaged and can&apos;t be read. Take your latest backup.</source>
            <translation>%1: Das Gesuchte ist beschädigt und kann nicht gelesen werden. Nehmen Sie Ihre letzte Sicherung.</translation>
        </message>
        <message>
            <source>%1: The file has no copy of the questionnaire. Choose its folder.</source>
            <translation>%1: Die Datei hat keine Kopie des Fragebogens. Wählen Sie seinen Ordner.</translation>
        </message>
        <message>
            <source>%1: Another program uses the file. Close it there, then open it again.</source>
            <translation>%1: Ein anderes Programm benutzt die Datei. Schließen Sie sie dort, und öffnen Sie sie dann wieder.</translation>
        </message>
        <message>
            <source>%1: The disk is full. Nothing keyed before is lost; make room, then key the last value again.</source>
            <translation>%1: Der Datenträger ist voll. Nichts früher Eingegebenes ist verloren; schaffen Sie Platz, und geben Sie den letzten Wert noch einmal ein.</translation>
        </message>
        <message>
            <source>%1: The file can&apos;t be written. Nothing keyed before is lost; make it writable, then open it again.</source>
            <translation>%1: Die Datei kann nicht geschrieben werden. Nichts früher Eingegebenes ist verloren; machen Sie sie beschreibbar, und öffnen Sie sie wieder.</translation>
        </message>
        <message>
            <source>%1: The file is no longer there. What was keyed before is in it: bring it or its share back, then open it again.</source>
            <translation>%1: Die Datei ist nicht mehr da. Was vorher eingegeben wurde, ist in ihr: Holen Sie sie oder ihre Freigabe zurück, und öffnen Sie sie wieder.</translation>
        </message>
        <message>
            <source>%1: The case was deleted. Read the list again.</source>
            <translation>%1: Der Fall wurde gelöscht. Lesen Sie die Liste neu.</translation>
        </message>
        <message>
            <source>%1: The system can&apos;t read or write the file. Nothing keyed before is lost; check the disk, then open it again.</source>
            <translation>%1: Das System kann die Datei nicht lesen oder schreiben. Nichts früher Eingegebenes ist verloren; prüfen Sie den Datenträger, und öffnen Sie sie wieder.</translation>
        </message>
        <message>
            <source>Another desk writes into this file: it is open for reading. Read the list anew to see what the other one has kept.</source>
            <translation>Ein anderer Arbeitsplatz schreibt in diese Datei: Sie ist zum Lesen geöffnet. Lesen Sie die Liste neu, um zu sehen, was dort inzwischen eingegeben wurde.</translation>
        </message>
        <message>
            <source>The file can&apos;t be written: it is open for reading. See to the rights and the room of its folder, then open it again.</source>
            <translation>Die Datei kann nicht geschrieben werden: Sie ist zum Lesen geöffnet. Prüfen Sie die Rechte und den Platz ihres Ordners, und öffnen Sie sie wieder.</translation>
        </message>
        <message>
            <source>The file is damaged: what can be read of it is shown. Save a copy of the file, which is a sound one, and go on with that.</source>
            <translation>Die Datei ist beschädigt: Was davon gelesen werden kann, wird gezeigt. Speichern Sie eine Kopie der Datei, die heil ist, und arbeiten Sie mit ihr weiter.</translation>
        </message>
    </context>
    <context>
        <name>tessalink::desk::QuestionnaireChooser</name>
        <message>
            <source>Questionnaire</source>
            <translation>Fragebogen</translation>
        </message>
        <message>
            <source>From a &amp;folder...</source>
            <translation>Aus einem &amp;Ordner...</translation>
        </message>
        <message>
            <source>Folder of the questionnaire</source>
            <translation>Ordner des Fragebogens</translation>
        </message>
    </context>
</TS>
