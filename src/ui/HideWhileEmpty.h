// A label that takes no room while its field has nothing to say. To be called once the form is bound.
#pragma once

#include "desktop/Form.h"

#include <QWidget>

inline void hideWhileEmpty(Form& form, const TextField& field, QWidget* label)
{
    form.follow({&field}, label, [&field, label] { label->setVisible(!field.text().isEmpty()); });
}
