<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de">
<context>
    <name>QFileDialog</name>
    <message>
        <source>Folder</source>
        <comment>All other platforms</comment>
        <translation>Ordner</translation>
    </message>
    <message>
        <source>Folder</source>
        <translation>Ordner</translation>
    </message>
    <message>
        <source>New Folder</source>
        <translation>Neuer Ordner</translation>
    </message>
    <message>
        <source>&amp;New Folder</source>
        <translation>&amp;Neuer Ordner</translation>
    </message>
    <message>
        <source>Parent Directory</source>
        <translation>Übergeordneter Ordner</translation>
    </message>
    <message>
        <source>Go to the parent directory</source>
        <translation>Zum übergeordneten Ordner</translation>
    </message>
    <message>
        <source>Directories</source>
        <translation>Ordner</translation>
    </message>
    <message>
        <source>Directory:</source>
        <translation>Ordner:</translation>
    </message>
    <message>
        <source>Find Directory</source>
        <translation>Ordner suchen</translation>
    </message>
    <message>
        <source>Could not delete directory.</source>
        <translation>Der Ordner konnte nicht gelöscht werden.</translation>
    </message>
</context>
</TS>
