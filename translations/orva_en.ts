<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>Till</name>
    <message numerus="yes">
        <source>%n messages go out with the configured credentials.</source>
        <translation>
            <numerusform>%n message goes out with the configured credentials.</numerusform>
            <numerusform>%n messages go out with the configured credentials.</numerusform>
        </translation>
    </message>
</context>
</TS>
