#include "devicepresent.h"

#include "app/shared/questionbox.h"
#include "device/devicelocator.h"

bool checkDevicePresent(const DeviceLocator &locator, QWidget *page, const QString &title, const QString &text)
{
    if (!locator.findDeviceRoot().isEmpty())
        return true;
    tellUser(page, QMessageBox::Information, title, text);
    return false;
}
