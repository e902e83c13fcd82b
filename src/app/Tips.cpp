#include "app/Tips.h"

#include "app/PrefsForm.h"
#include "foundation/Log.h"
#include "foundation/Numbers.h"
#include "foundation/SafeFile.h"
#include "foundation/Text.h"
#include "storage/Settings.h"

namespace {

QStringList readTips(const QString& path)
{
    const FileBytes file = readWholeFile(path.toStdString());
    if (file.trouble == ReadTrouble::unreadable)
        logLine(file.reason);
    return toQString(file.bytes).split('\n', Qt::SkipEmptyParts);
}

} // namespace

Tips::Tips(SettingsStore& store, PrefsForm& preferences, const QString& resources)
    : m_store(store)
    , m_preferences(preferences)
    , m_tips(readTips(resources + "/tips/tips.txt"))
{
    form.next.run = [this] { showNext(); };
    form.cancel.run = [this] { form.close(); };
    form.dontShowTips.onEdited = [this] { handleSwitch(form.dontShowTips.isOn()); };
    preferences.prefDontShowTips.onEdited = [this] { handleSwitch(m_preferences.prefDontShowTips.isOn()); };
}

void Tips::handleSwitch(bool dontShow)
{
    form.dontShowTips.setOn(dontShow);
    m_preferences.prefDontShowTips.setOn(dontShow);
    m_store.set(settings::dontShowTip, PlistValue::makeBoolean(dontShow));
}

void Tips::begin()
{
    const bool dontShow = m_store.flag(settings::dontShowTip);
    form.dontShowTips.setOn(dontShow);
    m_preferences.prefDontShowTips.setOn(dontShow);
    if (!dontShow)
        showNext();
}

int Tips::nextIndex() const
{
    const std::optional<std::string> last = m_store.text(settings::tipNumber);
    if (!last)
        return 0;
    const auto next = static_cast<long long>(numbers::leadingInt(*last)) + 1;
    return next >= 0 && next < m_tips.size() ? static_cast<int>(next) : 1;
}

void Tips::showNext()
{
    const int index = nextIndex();
    if (index >= m_tips.size())
        return;
    m_store.set(settings::tipNumber, PlistValue::makeInteger(index));
    form.tip.setText(m_tips[index]);
    form.open();
}
