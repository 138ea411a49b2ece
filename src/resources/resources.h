#pragma once

/// Makes everything below ":/fonts/", ":/language/" and ":/imgs/" readable. The resources are compiled into a static
/// library, where nothing would register them by itself. Call it once before the first use; further calls change
/// nothing. Needs no application object and cannot fail.
void loadResources();
