#pragma once

#include <QString>

// The language value is "lang_" and a two-letter code: the name of a translation file below ":/language/" without its
// ending, and the content of the settings key "Application/Language". "no_set" stands for a first start.
// The texts in the sources are Italian; a value without a translation file shows them.

/// The value for a first start on a system whose locale has this name ("de_DE" gives "lang_de").
QString initialLanguage(const QString &systemLocaleName);

/// The value that follows @p value when the language button is pressed: Italian, English, German, Italian. Any other
/// value, known or not, leads to Italian.
QString nextLanguage(const QString &value);

/// What the language button shows: the last two characters of @p value in capitals; less when the value is shorter.
QString languageButtonText(const QString &value);

/// The value stored in the settings, without a check of its content; empty when there is none.
QString storedLanguage();

/// Stores @p value in the settings at once. A store that cannot be written is passed over.
void storeLanguage(const QString &value);

/// The language to start with: the stored one, or the system's, which is then stored.
QString startLanguage();

/// Loads @p value from ":/language/" into the program's one translator and installs it, in the place of the language
/// before; the texts stay Italian when there is no such file. Qt then tells every widget of the change. Needs an
/// application object and the resources.
void installLanguage(const QString &value);
