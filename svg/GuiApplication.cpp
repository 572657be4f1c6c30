#include "svg/GuiApplication.h"

#include <QFileInfo>
#include <QGuiApplication>
#include <QPluginLoader>
#include <clocale>
#include <mutex>
#include <string>

namespace tzsvg {
namespace {

// Qt's application object sets the locale from the environment: the host's numbers would be read and written
// with another decimal mark from then on.
class LocaleKeeper {
  public:
    LocaleKeeper() {
        if (const char* const current = std::setlocale(LC_ALL, nullptr)) locale_ = current;
    }
    ~LocaleKeeper() { std::setlocale(LC_ALL, locale_.c_str()); }
    LocaleKeeper(const LocaleKeeper&) = delete;
    LocaleKeeper& operator=(const LocaleKeeper&) = delete;

  private:
    std::string locale_ = "C";
};

// Qt ends the process when it finds no platform plug-in, so it is loaded before it is relied on.
bool hasOffscreenPlatform() {
    const QStringList folders = QCoreApplication::libraryPaths();
    for (const QString& folder : folders) {
        QPluginLoader plugin(folder + QLatin1String("/platforms/libqoffscreen.so"));
        if (QFileInfo::exists(plugin.fileName()) && plugin.load()) return true;
    }
    return false;
}

bool makeApplication() {
    if (!hasOffscreenPlatform()) return false;
    // The host is no Qt program: nobody reads what Qt would say on stderr.
    qInstallMessageHandler(
        [](QtMsgType /*type*/, const QMessageLogContext& /*context*/, const QString& /*text*/) {});
    const LocaleKeeper keeper;
    // The application keeps references to these.
    static char name[] = "tzsvg";
    static char option[] = "-platform";
    static char platform[] = "offscreen";
    static char* arguments[] = {name, option, platform, nullptr};
    static int count = 3;
    // Never deleted: other users of Qt may rely on it by now, and static destructors run in no order that
    // would suit it.
    static QGuiApplication* const kApplication = new QGuiApplication(count, arguments);
    return kApplication != nullptr;
}

}  // namespace

bool ensureGuiApplication() {
    static std::mutex lock;  // of two threads that find none only one makes it
    const std::lock_guard held(lock);
    if (QCoreApplication* const existing = QCoreApplication::instance())
        return qobject_cast<QGuiApplication*>(existing) != nullptr;
    return makeApplication();
}

}  // namespace tzsvg
