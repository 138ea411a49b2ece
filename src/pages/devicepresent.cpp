#include "devicepresent.h"

#include "device/devicelocator.h"

#include <QMessageBox>

bool checkDevicePresent(const DeviceLocator &locator, QWidget *page, const QString &title, const QString &text)
{
    if (!locator.findDeviceRoot().isEmpty())
        return true;
    QMessageBox::information(page, title, text, QMessageBox::Ok);
    return false;
}
