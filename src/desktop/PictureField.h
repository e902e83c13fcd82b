// A picture in a form.
#pragma once

#include "desktop/Form.h"

#include <QImage>

class QMimeData;

class PictureField : public FormField {
public:
    using FormField::FormField;
    /// Null when there is none.
    const QImage& picture() const { return m_picture; }
    void setPicture(const QImage& picture)
    {
        if (m_picture.isNull() && picture.isNull())
            return;
        m_picture = picture;
        notify();
    }
    /// Something was dropped on the picture or pasted: the controller takes it or says why not.
    std::function<void(const QMimeData&)> onOffered;
    void offer(const QMimeData& data)
    {
        if (isEnabled() && onOffered)
            onOffered(data);
    }

private:
    QImage m_picture;
};
