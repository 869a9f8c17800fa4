#include "PortalRequest.h"

using namespace Qt::StringLiterals;

namespace {

const QString portalService = u"org.freedesktop.portal.Desktop"_s;
const QString requestInterface = u"org.freedesktop.portal.Request"_s;

} // namespace

PortalRequest::PortalRequest(QDBusConnection bus, Answer answer) : m_bus(std::move(bus)), m_answer(std::move(answer))
{
}

PortalRequest::~PortalRequest()
{
    stopListening();
}

void PortalRequest::listen(const QString &path)
{
    stopListening();
    m_path = path;
    m_bus.connect(portalService, m_path, requestInterface, u"Response"_s, this, SLOT(respond(uint,QVariantMap)));
}

QString PortalRequest::pathFor(const QDBusConnection &bus, const QString &token)
{
    const QString sender = bus.baseService().mid(1).replace(u'.', u'_');
    return u"/org/freedesktop/portal/desktop/request/"_s + sender + u'/' + token;
}

void PortalRequest::respond(uint code, const QVariantMap &results)
{
    m_answer(code, results);
}

void PortalRequest::stopListening()
{
    if (!m_path.isEmpty())
        m_bus.disconnect(portalService, m_path, requestInterface, u"Response"_s, this, SLOT(respond(uint,QVariantMap)));
}
