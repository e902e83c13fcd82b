#include "inventory/WebExport.h"

#include "desktop/Desktop.h"
#include "foundation/Folders.h"
#include "foundation/Log.h"
#include "foundation/SafeFile.h"
#include "foundation/Text.h"
#include "foundation/plist/PlistWriter.h"
#include "inventory/Item.h"

#include <QDir>

#include <algorithm>
#include <array>

namespace {

/// What the pages say about the quantity; "%@" stands for it, and nothing is said where there are no words.
struct QuantityMethod {
    std::string_view title;
    std::string_view outOfStock;
    std::string_view inStock;
};
constexpr std::array methods {
    QuantityMethod {"Just when out of stock", "<% bvd:OOS %>", ""},
    QuantityMethod {"Out of stock / in stock", "<% bvd:OOS %>", "<% bvd:instock %>"},
    QuantityMethod {"To order from supplier", "<% bvd:toorder %>", ""},
    // The classes are the other way round than their names say: the sites' style sheets are written so.
    QuantityMethod {"Show quantity", "<span class = \"instock\">Quantity:%@</span> ", "<span class = \"OOS\">Quantity:%@</span> "},
};

bool isOutOfStock(const Item& item)
{
    return item.getWholeQty() < 1;
}

std::string quantityMessage(const Item& item)
{
    const auto method =
        std::find_if(methods.begin(), methods.end(), [&](const QuantityMethod& each) { return each.title == item.getQuantityMethod(); });
    if (method == methods.end())
        return {};
    std::string message(isOutOfStock(item) ? method->outOfStock : method->inStock);
    if (const std::size_t place = message.find("%@"); place != std::string::npos)
        message.replace(place, 2, item.getQty());
    return message;
}

} // namespace

QStringList WebExport::quantityMethods()
{
    QStringList titles;
    for (const QuantityMethod& method : methods)
        titles += toQString(method.title);
    return titles;
}

PlistValue WebExport::contents(const Item& item)
{
    PlistValue contents = PlistValue::makeDict();
    for (const char* key : {"brand", "code", "condition", "description", "ean", "item", "price", "qty", "shipping", "taxcode", "variation"})
        contents.set(key, PlistValue(item.getFieldByName(key)));
    if (std::string message = quantityMessage(item); !message.empty())
        contents.set("qtymsg", PlistValue(std::move(message)));
    if (!isOutOfStock(item) || !item.getHidebuttoncode())
        contents.set("buttoncode", PlistValue(std::string(item.getButtoncode())));
    contents.set("template", PlistValue(std::string("catitem")));
    return contents;
}

QString WebExport::folder(const QString& websiteFolder) const
{
    QString folder = folders::expandHome(websiteFolder, m_user.home());
    while (folder.size() > 1 && folder.endsWith('/'))
        folder.chop(1);
    return folder;
}

QString WebExport::path(const Item& item) const
{
    return folder(toQString(item.getWebsitefolder())) + "/data/VendItem" + toQString(item.getCode());
}

void WebExport::write(const Item& item) const
{
    const QString file = path(item);
    const std::string path = file.toStdString();
    // A code may hold what leads elsewhere, and a folder that is not named from the root could be anywhere.
    const bool isPlain = folders::isSingleComponent("VendItem" + toQString(item.getCode()));
    const bool leadsSomewhere = isPlain && QDir::isAbsolutePath(folder(toQString(item.getWebsitefolder())));
    const Result<void> written = leadsSomewhere ? writeFileSafely(path, plist::write(contents(item))) : Error {"no such place"};
    logFormat(written ? "Successful saving data to %s\n" : "Unsuccessful exporting data to %s\n", path.c_str());
}
