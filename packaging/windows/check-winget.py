#!/usr/bin/python3
"""check-winget.py FOLDER INSTALLER: whether the files in FOLDER are a manifest that winget takes, and are about INSTALLER.

The rules are those that are documented for manifests of version 1.6: which fields must be there, and of what form the
fields are that are used here. Any other field is taken for a misspelt one."""
import hashlib
import pathlib
import sys

import jsonschema
import yaml

NAME = r'[^\.\s\\/:\*\?"<>\|\x01-\x1f]{1,32}'


def text(longest, shortest=1, pattern=None):
    rule = {"type": "string", "minLength": shortest, "maxLength": longest}
    return {**rule, "pattern": pattern} if pattern else rule


def one_of(*values):
    return {"type": "string", "enum": list(values)}


def list_of(rule, most):
    return {"type": "array", "items": rule, "minItems": 1, "maxItems": most, "uniqueItems": True}


def fields(required, **rules):
    return {"type": "object", "required": required.split(), "properties": rules, "additionalProperties": False}


ADDRESS = text(2048, pattern=r"^[Hh][Tt][Tt][Pp][Ss]?://.+$")
LOCALE = text(20, pattern=r"^[a-zA-Z]{2,3}(-[a-zA-Z]{1,8})*$")


def manifest(kind, required, **rules):
    return fields(
        "PackageIdentifier PackageVersion ManifestType ManifestVersion " + required,
        PackageIdentifier=text(128, pattern=rf"^{NAME}(\.{NAME}){{1,7}}$"),
        PackageVersion=text(128, pattern=r'^[^\\/:\*\?"<>\|\x01-\x1f]+$'),
        ManifestType={"const": kind},
        ManifestVersion={"const": "1.6.0"},
        **rules)


def locale(kind, required):
    return manifest(
        kind,
        "PackageLocale " + required,
        PackageLocale=LOCALE,
        Publisher=text(256, 2),
        PublisherUrl=ADDRESS,
        PackageName=text(256, 2),
        PackageUrl=ADDRESS,
        License=text(512, 3),
        Copyright=text(512, 3),
        ShortDescription=text(256, 3),
        Description=text(10000, 3),
        Moniker=text(40),
        Tags=list_of(text(40), 16))


INSTALLER = fields(
    "Architecture InstallerUrl InstallerSha256",
    Architecture=one_of("x86", "x64", "arm", "arm64", "neutral"),
    InstallerUrl=ADDRESS,
    InstallerSha256=text(64, 64, r"^[A-Fa-f0-9]{64}$"))

SCHEMAS = {
    "": manifest("version", "DefaultLocale", DefaultLocale=LOCALE),
    ".installer": manifest(
        "installer",
        "Installers",
        Platform=list_of(one_of("Windows.Desktop", "Windows.Universal"), 2),
        MinimumOSVersion=text(128, pattern=r"^\d+(\.\d+){0,3}$"),
        InstallerType=one_of("msix", "msi", "appx", "exe", "zip", "inno", "nullsoft", "wix", "burn", "pwa", "portable"),
        Scope=one_of("user", "machine"),
        InstallModes=list_of(one_of("interactive", "silent", "silentWithProgress"), 3),
        UpgradeBehavior=one_of("install", "uninstallPrevious", "deny"),
        ExpectedReturnCodes=list_of(
            fields(
                "InstallerReturnCode ReturnResponse",
                InstallerReturnCode={"type": "integer", "not": {"const": 0}},
                ReturnResponse=one_of("packageInUse", "installInProgress", "fileInUse", "cancelledByUser")), 128),
        ProductCode=text(255),
        Installers=list_of(INSTALLER, 1024)),
    ".locale.en-US": locale("defaultLocale", "Publisher PackageName License ShortDescription"),
    ".locale.it-IT": locale("locale", ""),
    ".locale.de-DE": locale("locale", ""),
}


def check(folder, installer):
    """Yields what is wrong, a line each."""
    identifier = "Q-Arte.Corvin4Manager"
    expected = {identifier + part + ".yaml": schema for part, schema in SCHEMAS.items()}
    found = {path.name for path in folder.iterdir()}
    if found != set(expected):
        yield "files: " + " ".join(sorted(found ^ set(expected)))
        return
    read = {name: yaml.safe_load((folder / name).read_text("utf-8")) for name in expected}
    for name, schema in expected.items():
        for error in jsonschema.Draft7Validator(schema).iter_errors(read[name]):
            yield f"{name}: {'/'.join(map(str, error.path))}: {error.message}"
        if read[name].get("PackageIdentifier") != identifier or read[name].get("PackageVersion") != folder.name:
            yield f"{name}: another package or version than its folder's"
        if ".locale." in name and read[name].get("PackageLocale") not in name.split("."):
            yield f"{name}: another language than its name's"
    if read[identifier + ".yaml"].get("DefaultLocale") != "en-US":
        yield "the default language is not that of the manifest defaultLocale"
    entry = read[identifier + ".installer.yaml"].get("Installers", [{}])[0]
    if entry.get("InstallerSha256", "").lower() != hashlib.sha256(installer.read_bytes()).hexdigest():
        yield "the checksum is another installer's"
    if not entry.get("InstallerUrl", "").endswith("/" + installer.name):
        yield "the address is another installer's"


def main():
    wrong = list(check(pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2])))
    print("\n".join(wrong), file=sys.stderr, end="\n" if wrong else "")
    return 1 if wrong else 0


sys.exit(main())
