#include "ui/kit/KitAccessibility.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QWidget>

namespace {

struct KitRole {
    const char* className;
    QAccessible::Role role;
};

constexpr KitRole kitRoles[] = {
    {"Sheet", QAccessible::Dialog},
    {"MessageBar", QAccessible::AlertMessage},
    {"SegmentedChoice", QAccessible::Grouping},
    {"FooterBar", QAccessible::Grouping},
    {"PictureWell", QAccessible::Graphic},
};

QAccessibleInterface* makeKitInterface(const QString& className, QObject* object)
{
    if (!object || !object->isWidgetType())
        return nullptr;
    for (const KitRole& entry : kitRoles) {
        if (className == QLatin1String(entry.className))
            return new QAccessibleWidget(static_cast<QWidget*>(object), entry.role);
    }
    return nullptr;
}

} // namespace

void installKitAccessibility()
{
    QAccessible::installFactory(makeKitInterface);
}
