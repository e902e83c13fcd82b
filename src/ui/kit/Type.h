// The type of the program: one family with figures of equal width, and the few sizes in use.
#pragma once

#include <QFont>

namespace type {

/// The family made at build time.
QString family();
/// Registers the embedded fonts with the application; needed once, before the first font is used.
void load();

/// 13 px, the size of nearly everything.
QFont body();
/// 13 px, semi-bold.
QFont strong();
/// 13 px, medium: buttons.
QFont button();
/// 12 px: notes and tool bar labels.
QFont small();
/// 12 px, semi-bold: headings of tables and columns of fields.
QFont tableHeading();
/// 14 px, semi-bold: the heading of a group, sheet or alert.
QFont group();
/// 14 px: text and buttons at the checkout.
QFont large();
/// 16 px: figures at the checkout.
QFont figures();
/// 20 px, semi-bold: the heading of a page or record.
QFont heading();
/// 26 px, semi-bold: the welcome.
QFont welcome();
/// 22 px, semi-bold: the balance of an order.
QFont balance();
/// 26 px, semi-bold: an amount being tendered.
QFont tender();
/// 30 px, semi-bold: the change to hand back.
QFont change();
/// 44 px, semi-bold: the total at the checkout.
QFont total();

} // namespace type
