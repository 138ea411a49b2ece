#pragma once

#include <QString>

class DeviceLocator;
class QWidget;

/// Looks for the player and returns whether it is there. When it is not, an information box with an Ok button tells
/// the user, over @p page, with the title and the text that the page has translated in its own context.
bool checkDevicePresent(const DeviceLocator &locator, QWidget *page, const QString &title, const QString &text);
