// Tells assistive programs what the kit's own controls are.
#pragma once

/// Once, before the first of these controls is shown.
void installKitAccessibility();
