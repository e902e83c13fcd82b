// The record picker over the window that asked.
#pragma once

#include <QObject>

class qvPicker;

/// Opens a sheet each time the picker does, over the active window.
class PickerPresenter : public QObject {
    Q_OBJECT
public:
    explicit PickerPresenter(qvPicker& picker, QObject* parent = nullptr);

private:
    void present();

    qvPicker& m_picker;
};
