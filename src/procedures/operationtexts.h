#pragma once

#include <QString>

/// The numbered texts of the maintenance procedures, see operationText(). Any int may be cast to it.
enum LANGUAGE_STRING_CODE : int
{
    TEXT_FORMAT_TITLE = 0,
    TEXT_FORMAT_QUESTION = 1,
    TEXT_LOOKING_FOR_DEVICE = 2,
    TEXT_DOWNLOADING_RELEASE = 3,
    TEXT_COPYING_UPDATE = 4,
    TEXT_BACKING_UP = 5,
    TEXT_COPYING_SYSTEM_TO_PC = 6,
    TEXT_FORMATTING = 7,
    TEXT_TRANSFERRING_SYSTEM = 8,
    TEXT_RESTORING_BACKUP = 9,
    TEXT_READING_DEVICE = 10,
    TEXT_SYSTEM_FILES_TITLE = 11,
    TEXT_SYSTEM_FILES_QUESTION = 12,
    TEXT_DEVICE_NOT_FOUND_TITLE = 13,
    TEXT_DEVICE_NOT_FOUND = 14,
    TEXT_FORMAT_ERROR_TITLE = 15,
    TEXT_FORMAT_ERROR = 16,
    TEXT_BACKUP_ERROR_TITLE = 17,
    TEXT_BACKUP_ERROR = 18,
    TEXT_RESTORE_ERROR_TITLE = 19,
    TEXT_RESTORE_ERROR = 20,
    TEXT_INSTALLED_TITLE = 21,
    TEXT_INSTALLED = 22,
    TEXT_DOWNLOAD_ERROR_TITLE = 23,
    TEXT_DOWNLOAD_ERROR = 24,
    TEXT_UPDATED_TITLE = 25,
    TEXT_UPDATED = 26
};

/// The text of @p code in the language of the interface, or "???" for a number that is none of the enumeration's.
QString operationText(LANGUAGE_STRING_CODE code);
