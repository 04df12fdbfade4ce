<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>Till</name>
    <message numerus="yes">
        <source>The loyalty system sent %n more that the check cannot take; that is left out.</source>
        <translation>
            <numerusform>The loyalty system sent %n more that the check cannot take; that is left out.</numerusform>
            <numerusform>The loyalty system sent %n more that the check cannot take; they are left out.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n calls, %1 sent, identical.
</source>
        <translation>
            <numerusform>%n call, %1 sent, identical.
</numerusform>
            <numerusform>%n calls, %1 sent, identical.
</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Nothing: %n calls, identical.</source>
        <translation>
            <numerusform>Nothing: %n call, identical.</numerusform>
            <numerusform>Nothing: %n calls, identical.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n records are in %1. It holds whole card numbers: hand it on with care.</source>
        <translation>
            <numerusform>%n record is in %1. It holds whole card numbers: hand it on with care.</numerusform>
            <numerusform>%n records are in %1. It holds whole card numbers: hand it on with care.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n do not agree.
</source>
        <translation>
            <numerusform>%n does not agree.
</numerusform>
            <numerusform>%n do not agree.
</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n messages go out with the configured credentials.</source>
        <translation>
            <numerusform>%n message goes out with the configured credentials.</numerusform>
            <numerusform>%n messages go out with the configured credentials.</numerusform>
        </translation>
    </message>
</context>
</TS>
