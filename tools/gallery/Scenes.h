// The windows of the gallery: the kit's controls put together as the program does, with made-up records.
#pragma once

#include <QString>
#include <QWidget>

#include <functional>
#include <memory>
#include <vector>

struct Scene {
    QString name;
    /// Makes the window; it is shown afterwards.
    std::function<std::unique_ptr<QWidget>()> make;
    /// What is to happen once the window is on the screen: focus, sheets.
    std::function<void(QWidget*)> afterShow;
};

std::vector<Scene> listScenes();
std::vector<Scene> editorScenes();
std::vector<Scene> stateScenes();
