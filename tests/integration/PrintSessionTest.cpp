#include "platform/CupsPrintInfo.h"
#include "platform/CupsPrintSession.h"
#include "platform/Texts.h"
#include "tests/support/TempFolder.h"
#include "tests/support/VirtualDispatcher.h"

#include <QLabel>
#include <QPrintDialog>
#include <QPrinter>
#include <QProcess>
#include <QProgressDialog>
#include <QStandardPaths>
#include <arpa/inet.h>
#include <gmock/gmock.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;
using namespace platform;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

int freePort()
{
    const int descriptor = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    ::bind(descriptor, reinterpret_cast<sockaddr*>(&address), size);
    ::getsockname(descriptor, reinterpret_cast<sockaddr*>(&address), &size);
    ::close(descriptor);
    return ntohs(address.sin_port);
}

std::string addressOf(int port)
{
    return "ipp://localhost:" + std::to_string(port) + "/ipp/print";
}

/// An IPP printer on this machine. What it prints goes into a fifo, its job's attributes into a file.
class IppPrinter {
public:
    explicit IppPrinter(const QString& types)
    {
        // It wants a system bus, though it announces itself to nobody.
        bus.start("dbus-daemon", {"--session", "--nofork", "--print-address=1"});
        bus.waitForReadyRead();
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("DBUS_SYSTEM_BUS_ADDRESS", QString(bus.readLine()).trimmed());

        ::mkfifo(paper().c_str(), 0600);
        const std::string command = folder.path("print");
        std::ofstream(command) << "#!/bin/sh\nenv >'" + folder.path("attributes") + "'\ncat \"$1\" >'"
                + paper() + "'\n";
        fs::permissions(command, fs::perms::owner_all);

        printer.setProcessEnvironment(environment);
        printer.setProcessChannelMode(QProcess::MergedChannels);
        printer.start("ippeveprinter",
            {"-r", "off", "-v", "-n", "localhost", "-p", QString::number(port), "-f", types, "-d",
                QString::fromStdString(folder.path()), "-c", QString::fromStdString(command), "Test"});
        while (!isReady && printer.waitForReadyRead())
            isReady = printer.readAll().contains("printer-uuid");
    }
    ~IppPrinter()
    {
        for (QProcess* process : {&printer, &bus}) {
            process->kill();
            process->waitForFinished();
        }
    }

    std::string address() const { return addressOf(port); }
    /// What was printed, once it is.
    std::string printed() const { return contents(paper()); }
    QStringList attributes() const
    {
        return QString::fromStdString(contents(folder.path("attributes"))).split('\n');
    }

    bool isReady = false;

private:
    std::string paper() const { return folder.path("paper"); }

    TempFolder folder;
    int port = freePort();
    QProcess bus;
    QProcess printer;
};

class PrintSessionTest : public testing::Test {
protected:
    // No printer of the machine takes part.
    PrintSessionTest() { cups::setServerUsable(false); }

    PrintSession::Types types(const std::string& printer)
    {
        PrintSession::Types result;
        session.mimeTypes(printer, *info, [&](PrintSession::Types answer) { result = std::move(answer); });
        dispatcher.runAll();
        return result;
    }

    std::optional<int> print(const std::string& printer, const std::string& data)
    {
        std::optional<int> result;
        session.printFile(printer, *info, "image/jpeg", data, [&](int status) { result = status; });
        dispatcher.runAll();
        return result;
    }

    QPrinter& chosen()
    {
        auto& settings = CupsPrintInfo::of(*info);
        if (!settings.printer)
            settings.printer = std::make_unique<QPrinter>();
        return *settings.printer;
    }

    VirtualDispatcher dispatcher;
    CupsPrintSession session{dispatcher};
    std::unique_ptr<PrintInfo> info = session.makePrintInfo();
};

TEST_F(PrintSessionTest, TheBytesAndTheSettingsReachAPrinter)
{
    if (QStandardPaths::findExecutable("ippeveprinter").isEmpty())
        GTEST_SKIP() << "ippeveprinter is not installed";
    const IppPrinter printer("image/jpeg,application/pdf");
    if (!printer.isReady)
        GTEST_SKIP() << "ippeveprinter does not run here";
    const auto accepted = types(printer.address());
    ASSERT_TRUE(accepted);
    EXPECT_THAT(*accepted, Contains("image/jpeg"));

    session.setValue(*info, "fit-to-page", "true");
    chosen().setCopyCount(3);
    chosen().setPageSize(QPageSize(QPageSize::A4));
    chosen().setPageOrientation(QPageLayout::Landscape);
    std::string picture;
    for (int i = 0; i < 300'000; ++i)
        picture.push_back(char(i * 7 % 251));
    ASSERT_EQ(print(printer.address(), picture), 0);
    EXPECT_TRUE(printer.printed() == picture);
    for (const char* attribute :
        {"IPP_COPIES=3", "IPP_MEDIA=iso_a4_210x297mm", "IPP_ORIENTATION_REQUESTED=landscape",
            "IPP_FIT_TO_PAGE=true", "IPP_DOCUMENT_FORMAT_SUPPLIED=image/jpeg"})
        EXPECT_TRUE(printer.attributes().contains(attribute)) << attribute;

    // A paper that it has not: its own is better than no print.
    chosen().setPageSize(QPageSize(QPageSize::A0));
    ASSERT_EQ(print(printer.address(), "small"), 0);
    EXPECT_EQ(printer.printed(), "small");
    EXPECT_THAT(printer.attributes().filter("IPP_MEDIA=").toVector(), IsEmpty());
}

TEST_F(PrintSessionTest, PrintersThatAreNotThereFail)
{
    for (const std::string& printer : {std::string("no-such-queue"), addressOf(freePort()), std::string()}) {
        SCOPED_TRACE(printer);
        EXPECT_FALSE(types(printer));
        EXPECT_NE(print(printer, "picture").value_or(0), 0);
    }
    EXPECT_FALSE(session.destinationType(*info)) << "no panel was ever shown";
    EXPECT_NE(session.currentPrinter(*info).status, 0);
}

TEST_F(PrintSessionTest, WithoutAPrinterThePanelOpensAndSaysSo)
{
    QWidget window;
    window.show();
    std::vector<int> answers;
    const auto show = [&] { session.showPanel(window, *info, [&](int code) { answers.push_back(code); }); };
    show();
    show();
    dispatcher.runAll();
    const auto panels = window.findChildren<QPrintDialog*>();
    ASSERT_EQ(panels.size(), 1) << "a second one is ignored";
    EXPECT_EQ(panels[0]->windowModality(), Qt::WindowModal);
    EXPECT_TRUE(panels[0]->testOption(QPrintDialog::PrintShowPageSize));
    const auto* label = panels[0]->findChild<QLabel*>("noPrinterLabel");
    ASSERT_TRUE(label);
    EXPECT_TRUE(label->isVisible());
    EXPECT_EQ(label->text(), localized("print.no_printer"));
    EXPECT_THAT(answers, IsEmpty());
    panels[0]->reject();
    EXPECT_THAT(answers, ElementsAre(0));
    EXPECT_EQ(session.destinationType(*info), PrintSession::Destination::file);

    show();
    emit window.findChild<QProgressDialog*>()->canceled();
    EXPECT_THAT(answers, ElementsAre(0, 0)) << "the user does not wait for the server";
    dispatcher.runAll();
    EXPECT_THAT(answers, ElementsAre(0, 0));
}

TEST_F(PrintSessionTest, TheWindowMayGoWhileTheServerIsAsked)
{
    auto window = std::make_unique<QWidget>();
    bool answered = false;
    session.showPanel(*window, *info, [&](int) { answered = true; });
    window.reset();
    info.reset();
    dispatcher.runAll();
    EXPECT_FALSE(answered);
}

} // namespace
