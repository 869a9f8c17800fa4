#include "VeltoAppDelegate.h"

#include <QCoreApplication>
#include <QEvent>
#include <QSocketNotifier>

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <utility>

namespace {

// The write end of the one signal pipe. A signal handler can reach nothing else, so this is the
// single place where the process keeps state outside an object.
volatile sig_atomic_t signalPipeWriteEnd = -1;

void onTerminationSignal(int)
{
    const int descriptor = signalPipeWriteEnd;
    if (descriptor < 0)
        return;
    const int savedErrno = errno;
    const char byte = 1;
    // A full pipe already holds a request; the byte may be dropped.
    [[maybe_unused]] const auto written = ::write(descriptor, &byte, 1);
    errno = savedErrno;
}

} // namespace

VeltoAppDelegate::VeltoAppDelegate(Quit quit, Sleep sleep, QObject *parent)
    : QObject(parent), m_quit(quit ? std::move(quit) : defaultQuit()), m_sleep(std::move(sleep)), m_hasRunningTimer([] { return false; }),
      m_stopRunningTimer([]() -> Task<> { co_return; })
{
}

VeltoAppDelegate::~VeltoAppDelegate()
{
    if (m_signalNotifier) {
        m_signalNotifier.reset();
        signalPipeWriteEnd = -1;
        struct sigaction action {};
        action.sa_handler = SIG_DFL;
        sigaction(SIGTERM, &action, nullptr);
        sigaction(SIGINT, &action, nullptr);
        ::close(m_signalPipe[0]);
        ::close(m_signalPipe[1]);
    }
    if (m_application)
        m_application->removeEventFilter(this);
}

VeltoAppDelegate::Quit VeltoAppDelegate::defaultQuit()
{
    return [] { QCoreApplication::exit(0); };
}

VeltoAppDelegate *VeltoAppDelegate::of(const QCoreApplication *application)
{
    if (application == nullptr)
        return nullptr;
    return application->findChild<VeltoAppDelegate *>(QString(), Qt::FindDirectChildrenOnly);
}

void VeltoAppDelegate::setHooks(HasRunningTimer hasRunningTimer, StopRunningTimer stopRunningTimer)
{
    m_hasRunningTimer = std::move(hasRunningTimer);
    m_stopRunningTimer = std::move(stopRunningTimer);
}

void VeltoAppDelegate::watchQuitEvents(QCoreApplication *application)
{
    m_application = application;
    application->installEventFilter(this);
}

void VeltoAppDelegate::watchTerminationSignals()
{
    if (m_signalNotifier || ::pipe2(m_signalPipe, O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    m_signalNotifier = std::make_unique<QSocketNotifier>(m_signalPipe[0], QSocketNotifier::Read);
    connect(m_signalNotifier.get(), &QSocketNotifier::activated, this, &VeltoAppDelegate::readSignalPipe);
    signalPipeWriteEnd = m_signalPipe[1];
    struct sigaction action {};
    action.sa_handler = &onTerminationSignal;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART;
    sigaction(SIGTERM, &action, nullptr);
    sigaction(SIGINT, &action, nullptr);
}

void VeltoAppDelegate::watchSystemSleep(const QDBusConnection &systemBus)
{
    m_sleepInhibitor = std::make_unique<SleepInhibitor>(
        systemBus, [self = QPointer<VeltoAppDelegate>(this)] { return stopBeforeSleep(self); });
}

Task<> VeltoAppDelegate::stopBeforeSleep(QPointer<VeltoAppDelegate> self)
{
    if (!self || !self->m_hasRunningTimer())
        co_return;
    const StopRunningTimer stop = self->m_stopRunningTimer;
    co_await stop();
}

void VeltoAppDelegate::readSignalPipe()
{
    char bytes[64];
    while (::read(m_signalPipe[0], bytes, sizeof bytes) > 0) {
    }
    requestQuit();
}

bool VeltoAppDelegate::eventFilter(QObject *watched, QEvent *event)
{
    // The quit command and the close of the last window both arrive here as a quit event.
    if (watched != m_application || event->type() != QEvent::Quit)
        return false;
    requestQuit();
    return true;
}

void VeltoAppDelegate::requestQuit()
{
    if (m_isQuitDeferred)
        return;
    if (!m_hasRunningTimer()) {
        m_quit();
        return;
    }
    m_isQuitDeferred = true;
    m_didReplyToTermination = false;
    deferQuit(QPointer<VeltoAppDelegate>(this));
}

Task<> VeltoAppDelegate::deferQuit(QPointer<VeltoAppDelegate> self)
{
    const auto watchdog = self->m_sleep(quitGrace, [self] {
        if (self)
            self->reply();
    });
    const StopRunningTimer stop = self->m_stopRunningTimer;
    co_await stop();
    watchdog();
    if (self)
        self->reply();
}

void VeltoAppDelegate::reply()
{
    if (m_didReplyToTermination)
        return;
    m_didReplyToTermination = true;
    m_quit();
}
