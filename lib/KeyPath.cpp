#include "lib/KeyPath.h"

#include <QMetaMethod>
#include <QMetaProperty>
#include <QStringList>

namespace {

QObject* ownerOfLast(const QObject* object, const QStringList& names)
{
    auto* owner = const_cast<QObject*>(object);
    for (qsizetype i = 0; owner && i + 1 < names.size(); ++i)
        owner = owner->property(names[i].toLatin1()).value<QObject*>();
    return owner;
}

} // namespace

void ObjectController::setContent(QObject* object)
{
    held = object;
    emit contentChanged();
}

QVariant valueForKeyPath(const QObject* object, const QString& keyPath)
{
    const QStringList names = keyPath.split(u'.');
    const QObject* owner = ownerOfLast(object, names);
    return owner ? owner->property(names.last().toLatin1()) : QVariant();
}

bool setValueForKeyPath(QObject* object, const QString& keyPath, const QVariant& value)
{
    const QStringList names = keyPath.split(u'.');
    QObject* owner = ownerOfLast(object, names);
    return owner && owner->setProperty(names.last().toLatin1(), value);
}

KeyPathObserver::KeyPathObserver(QObject* object, const QString& keyPath, std::function<void()> changed)
    : observed(object),
      path(keyPath),
      report(std::move(changed))
{
    connectHops();
}

void KeyPathObserver::connectHops()
{
    for (const auto& hop : hops)
        disconnect(hop);
    hops.clear();
    const QMetaMethod slot = staticMetaObject.method(staticMetaObject.indexOfSlot("somethingChanged()"));
    QObject* owner = observed;
    for (const QString& name : path.split(u'.')) {
        if (!owner)
            return;
        const QMetaObject* type = owner->metaObject();
        const QMetaProperty property = type->property(type->indexOfProperty(name.toLatin1()));
        if (property.hasNotifySignal())
            hops.push_back(connect(owner, property.notifySignal(), this, slot));
        owner = property.isValid() ? property.read(owner).value<QObject*>() : nullptr;
    }
}

void KeyPathObserver::somethingChanged()
{
    connectHops();
    // The receiver may destroy this observer.
    const auto run = report;
    run();
}
