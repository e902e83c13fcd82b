#include "ui/settings/Pages.h"

#include "app/PrefsController.h"
#include "ui/kit/Button.h"
#include "ui/kit/ColourPalette.h"
#include "ui/kit/Fields.h"
#include "ui/kit/Label.h"
#include "ui/kit/RowDelegate.h"
#include "ui/kit/Theme.h"
#include "ui/settings/SettingsPage.h"

#include <QColorDialog>
#include <QPainter>
#include <QVBoxLayout>

namespace {

constexpr int partWidth = 80;
constexpr int otherWidth = 150;
constexpr int sampleHeight = 30;

QColor onScreen(const RgbColour& colour)
{
    return QColor::fromRgbF(std::clamp(colour.red, 0.0f, 1.0f), std::clamp(colour.green, 0.0f, 1.0f), std::clamp(colour.blue, 0.0f, 1.0f));
}

RgbColour inSettings(const QColor& colour)
{
    return {static_cast<float>(colour.redF()), static_cast<float>(colour.greenF()), static_cast<float>(colour.blueF())};
}

/// A row of a list as it looks in the status.
class StatusSample : public QWidget {
public:
    explicit StatusSample(PrefsController& preferences) : m_preferences(preferences)
    {
        setFixedHeight(sampleHeight);
        setObjectName("statusSample");
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.fillRect(rect(), themeColour(Colour::surface));
        if (const std::optional<RgbColour> stored = m_preferences.chosenStatusColour()) {
            const QColor colour = onScreen(*stored);
            painter.fillRect(rect(), Theme::current().rowTint(colour));
            painter.fillRect(0, 0, RowDelegate::statusBarWidth, height(), colour);
        }
        painter.setPen(themeColour(Colour::text));
        painter.drawText(rect().adjusted(16, 0, -RowDelegate::inset, 0), Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
            m_preferences.form.colourStatus.title());
    }

private:
    PrefsController& m_preferences;
};

/// The whole range of colours, for whoever finds none among those offered.
void chooseAnyColour(PrefsController& preferences, QWidget* button)
{
    QColorDialog dialog(onScreen(preferences.shownStatusColour()), button->window());
    dialog.setOption(QColorDialog::DontUseNativeDialog);
    dialog.setWindowTitle(SettingsPage::tr("Colour of “%1”").arg(preferences.form.colourStatus.title()));
    if (dialog.exec() == QDialog::Accepted)
        preferences.setColorForStatus(inSettings(dialog.selectedColor()));
}

NumberField* partField(const TextField& field)
{
    auto* part = settingsField<NumberField>(field);
    part->setFixedWidth(partWidth);
    return part;
}

} // namespace

SettingsPage* settingsPages::makeColours(PrefsController& preferences)
{
    const PrefsForm& form = preferences.form;
    auto* page = new SettingsPage(SettingsPage::tr("Status Colours"));
    page->addNote(SettingsPage::tr("Orders stand in the colour of their status. A colour counts as soon as it is chosen."));
    page->column()->addSpacing(8);
    FormGrid* fields = page->addForm();
    fields->addRow(SettingsPage::tr("Status"), settingsField<ChoiceBox>(form.colourStatus), 240);
    auto* palette = new ColourPalette(SettingsPage::tr("Colour"));
    palette->setObjectName("palette");
    fields->addRow(SettingsPage::tr("Colour"), palette);
    fields->addRow(SettingsPage::tr("Red"), partField(form.colourRed), partWidth);
    fields->addRow(SettingsPage::tr("Green"), partField(form.colourGreen), partWidth);
    fields->addRow(SettingsPage::tr("Blue"), partField(form.colourBlue), partWidth);
    auto* any = new Button(SettingsPage::tr("Other Colour…"));
    any->setObjectName("otherColour");
    fields->addRow({}, any, otherWidth);
    fields->addGap(16);
    auto* sample = new StatusSample(preferences);
    fields->addRow(SettingsPage::tr("In the list"), sample);
    page->column()->addStretch(1);

    const auto show = [&preferences, palette, sample] {
        palette->setColour(onScreen(preferences.shownStatusColour()));
        sample->update();
    };
    QObject::connect(&preferences, &PrefsController::statusColourChanged, page, show);
    QObject::connect(&preferences, &PrefsController::listsChanged, page, show);
    QObject::connect(page, &SettingsPage::shown, page, show);
    QObject::connect(
        palette, &ColourPalette::chosen, page, [&preferences](const QColor& colour) { preferences.setColorForStatus(inSettings(colour)); });
    QObject::connect(any, &QPushButton::clicked, page, [&preferences, any] { chooseAnyColour(preferences, any); });
    return page;
}
