#pragma once

#include <QGenericPlugin>

/// Loaded by the program at its start when QT_QPA_GENERIC_PLUGINS=corvinwalk and QT_PLUGIN_PATH leads here: makes a
/// WalkDriver that goes through the scenario named by the environment (see WalkDriver).
class WalkPlugin : public QGenericPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "walkplugin.json")

public:
    using QGenericPlugin::QGenericPlugin;

    /// Returns the driver for the key "corvinwalk", null for any other. @p parameters are not used.
    QObject *create(const QString &key, const QString &parameters) override;
};
