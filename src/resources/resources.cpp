#include "resources.h"

#include <QtGlobal>

/// Outside any namespace and linkage of ours: Q_INIT_RESOURCE declares the generated function where it stands.
void loadResources()
{
    Q_INIT_RESOURCE(corvin);
}
