<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US" sourcelanguage="en">
    <context>
        <name>FieldRules</name>
        <message numerus="yes">
            <source>%1: at most %n character(s).</source>
            <translation>
                <numerusform>%1: at most %n character.</numerusform>
                <numerusform>%1: at most %n characters.</numerusform>
            </translation>
        </message>
    </context>
    <context>
        <name>tessalink::desk::AnswerSheet</name>
        <message numerus="yes">
            <source>Second keying complete: %1 answers, %n corrected.</source>
            <translation>
                <numerusform>Second keying complete: %1 answers, %n corrected.</numerusform>
                <numerusform>Second keying complete: %1 answers, %n corrected.</numerusform>
            </translation>
        </message>
        <message numerus="yes">
            <source>Second keying: %1 of %2, %n corrected.</source>
            <translation>
                <numerusform>Second keying: %1 of %2, %n corrected.</numerusform>
                <numerusform>Second keying: %1 of %2, %n corrected.</numerusform>
            </translation>
        </message>
    </context>
    <context>
        <name>tessalink::desk::BatchDialog</name>
        <message numerus="yes">
            <source>Reports of %n case(s)</source>
            <translation>
                <numerusform>Reports of %n case</numerusform>
                <numerusform>Reports of %n cases</numerusform>
            </translation>
        </message>
        <message numerus="yes">
            <source>Stopped. %n report(s) are in the folder.</source>
            <translation>
                <numerusform>Stopped. %n report is in the folder.</numerusform>
                <numerusform>Stopped. %n reports are in the folder.</numerusform>
            </translation>
        </message>
        <message numerus="yes">
            <source>%n report(s) are in the folder.</source>
            <translation>
                <numerusform>%n report is in the folder.</numerusform>
                <numerusform>%n reports are in the folder.</numerusform>
            </translation>
        </message>
    </context>
    <context>
        <name>tessalink::desk::CasePage</name>
        <message numerus="yes">
            <source>%n answer(s) differ between both keyings</source>
            <translation>
                <numerusform>%n answer differs between both keyings</numerusform>
                <numerusform>%n answers differ between both keyings</numerusform>
            </translation>
        </message>
    </context>
    <context>
        <name>tessalink::desk::DataActions</name>
        <message numerus="yes">
            <source>The scores of %n case(s) are in %1.</source>
            <translation>
                <numerusform>The scores of %n case are in %1.</numerusform>
                <numerusform>The scores of %n cases are in %1.</numerusform>
            </translation>
        </message>
    </context>
    <context>
        <name>tessalink::desk::ImportDialog</name>
        <message numerus="yes">
            <source>%n case(s) added.</source>
            <translation>
                <numerusform>%n case added.</numerusform>
                <numerusform>%n cases added.</numerusform>
            </translation>
        </message>
        <message numerus="yes">
            <source>%n row(s) left out:</source>
            <translation>
                <numerusform>%n row left out:</numerusform>
                <numerusform>%n rows left out:</numerusform>
            </translation>
        </message>
    </context>
    <context>
        <name>tessalink::desk::MainWindow</name>
        <message numerus="yes">
            <source>Delete %n cases?</source>
            <translation>
                <numerusform>Delete %n case?</numerusform>
                <numerusform>Delete %n cases?</numerusform>
            </translation>
        </message>
    </context>
    <context>
        <name>tessalink::desk::TrailDialog</name>
        <message numerus="yes">
            <source>%n entries</source>
            <translation>
                <numerusform>%n entry</numerusform>
                <numerusform>%n entries</numerusform>
            </translation>
        </message>
    </context>
</TS>
