#pragma once

#include <QObject>
#include <QPointer>
#include <QVariant>

#include <functional>
#include <vector>

/// Markers that a binding may get instead of a value: no selection, or several different values.
enum class ControllerMarker { noSelection, multipleValues };

/// Holds the object that controls are bound to; key paths go through it as "content.NAME".
class ObjectController : public QObject {
    Q_OBJECT
    Q_PROPERTY(QObject* content READ content WRITE setContent NOTIFY contentChanged)

public:
    using QObject::QObject;

    QObject* content() const { return held; }
    void setContent(QObject* object);

signals:
    void contentChanged();

private:
    QPointer<QObject> held;
};

/// The property at the end of a path of property names joined by dots. An invalid value when an object on the
/// way is missing or has no such property.
QVariant valueForKeyPath(const QObject* object, const QString& keyPath);
/// False when the path leads nowhere or the property does not take the value.
bool setValueForKeyPath(QObject* object, const QString& keyPath, const QVariant& value);

/// Reports every announced change of the value at a key path, also when an object on the way was replaced.
class KeyPathObserver : public QObject {
    Q_OBJECT

public:
    KeyPathObserver(QObject* object, const QString& keyPath, std::function<void()> changed);

    QObject* object() const { return observed; }
    const QString& keyPath() const { return path; }

private slots:
    void somethingChanged();

private:
    void connectHops();

    QPointer<QObject> observed;
    QString path;
    std::function<void()> report;
    std::vector<QMetaObject::Connection> hops;
};

Q_DECLARE_METATYPE(ControllerMarker)
