<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en">
<context>
    <name>QFileDialog</name>
    <message>
        <source>Parent Directory</source>
        <translation>Parent Folder</translation>
    </message>
    <message>
        <source>Go to the parent directory</source>
        <translation>Go to the parent folder</translation>
    </message>
    <message>
        <source>Directories</source>
        <translation>Folders</translation>
    </message>
    <message>
        <source>Directory:</source>
        <translation>Folder:</translation>
    </message>
    <message>
        <source>Find Directory</source>
        <translation>Find Folder</translation>
    </message>
    <message>
        <source>Could not delete directory.</source>
        <translation>The folder could not be deleted.</translation>
    </message>
</context>
</TS>
