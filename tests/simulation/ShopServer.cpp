#include "simulation/ShopServer.h"

#include <QCoreApplication>

#include <stdexcept>

namespace {

std::string stringOf(const QJsonObject& object, const char* key)
{
    return object[QLatin1String(key)].toString().toStdString();
}

void editField(FormField& field, const QJsonValue& value)
{
    if (auto* text = dynamic_cast<TextField*>(&field))
        text->edit(value.toString());
    else if (auto* flag = dynamic_cast<FlagField*>(&field))
        flag->edit(value.toBool());
    else if (auto* choice = dynamic_cast<ChoiceField*>(&field))
        choice->edit(value.isString() ? static_cast<int>(choice->titles().indexOf(value.toString())) : value.toInt());
}

} // namespace

void editForm(Form& form, const QJsonArray& edits)
{
    for (const QJsonValue& edit : edits) {
        FormField* field = form.field(edit[0].toString());
        if (!field)
            throw std::invalid_argument("no field " + edit[0].toString().toStdString());
        editField(*field, edit[1]);
    }
}

ShopServer::ShopServer(const QJsonObject& asked)
    : m_home(stringOf(asked, "home"))
    , m_counts(stringOf(asked, "counts"))
    , m_shop(std::make_unique<Shop>(QString::fromStdString(m_home), ShopTraces {"/dev/null", {}, asked["user"].toString()}))
{
    m_shop->alerts().answer = [this](const Alert& alert) { return answerTo(alert); };
    m_shop->journal().listener = [this](const char* event, const QString& text) {
        if (qstrcmp(event, "told") == 0 && !m_told.contains(text))
            m_told.append(text);
    };
}

std::optional<int> ShopServer::answerTo(const Alert& alert)
{
    m_alerts.append(QJsonArray {alert.title, alert.text});
    const QJsonValue button = m_buttons.value(alert.title);
    return button.isUndefined() ? std::nullopt : std::optional(button.toInt());
}

void ShopServer::armFault(const QJsonObject& fault)
{
    if (m_faultStays && fault.isEmpty())
        return;
    m_faultStays = fault["stays"].toBool();
    const std::string folder = fault.contains("folder") ? stringOf(fault, "folder") : m_home;
    beginFaults({folder, m_counts, std::to_string(fault["at"].toInt()), stringOf(fault, "kind"), stringOf(fault, "last")});
}

QJsonObject ShopServer::handle(const QJsonObject& asked)
{
    m_answer = {};
    m_alerts = {};
    m_told = {};
    m_buttons = asked["answers"].toObject();
    m_shop->clock().moment = QDateTime::fromString(asked["now"].toString(), Qt::ISODate);
    m_shop->clock().moment.setTimeSpec(Qt::UTC);
    const ShopDeed deed = shopDeed(asked["do"].toString());
    if (!deed)
        throw std::invalid_argument("no deed " + stringOf(asked, "do"));
    armFault(asked["fault"].toObject());
    deed(*this, asked);
    app().folder().drain();
    QCoreApplication::processEvents();
    if (!m_faultStays)
        beginFaults({});
    if (!m_hasQuit && !m_memory)
        m_memory = std::make_unique<MemoryDump>(app());
    say("alerts", m_alerts);
    say("told", m_told);
    say("unsaved", app().folder().unsavedReason());
    say("readOnly", app().session().isReadOnly());
    if (m_memory && !m_hasQuit)
        say("memory", m_memory->changed());
    return m_answer;
}

void ShopServer::quit()
{
    app().quit();
    m_hasQuit = true;
}

namespace {

void startShop(ShopServer& server, const QJsonObject&)
{
    server.shop().start();
}

void quitShop(ShopServer& server, const QJsonObject&)
{
    server.quit();
}

} // namespace

ShopDeed shopDeed(const QString& name)
{
    if (name == "start")
        return startShop;
    if (name == "quit")
        return quitShop;
    for (const auto find : {recordDeed, orderDeed, houseDeed}) {
        if (const ShopDeed found = find(name))
            return found;
    }
    return nullptr;
}
