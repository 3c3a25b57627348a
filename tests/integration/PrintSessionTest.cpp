#include "platform/cups/CupsPrintInfo.h"
#include "platform/cups/CupsPrintSession.h"
#include "tests/support/GuiTesting.h"

#include <QPrintDialog>
#include <QPrinter>

using namespace platform;

namespace {

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

    VirtualDispatcher dispatcher;
    CupsPrintSession session{dispatcher};
    std::unique_ptr<PrintInfo> info = session.makePrintInfo();
};

TEST_F(PrintSessionTest, WhatThePanelHoldsBecomesOptionsOfTheJob)
{
    auto& settings = CupsPrintInfo::of(*info);
    settings.printer = std::make_unique<QPrinter>();
    settings.printer->setCopyCount(3);
    settings.printer->setPageSize(QPageSize(QPageSize::A4));
    settings.printer->setPageOrientation(QPageLayout::Landscape);
    settings.printer->setColorMode(QPrinter::GrayScale);
    session.setValue(*info, "fit-to-page", "true");
    EXPECT_EQ(jobOptions(settings),
        (cups::JobOptions{{"copies", "3"}, {"fit-to-page", "true"}, {"media", "iso_a4_210x297mm"},
            {"orientation-requested", "4"}, {"print-color-mode", "monochrome"}}));
}

TEST_F(PrintSessionTest, PrintersThatAreNotThereFail)
{
    for (const char* printer : {"no-such-queue", "ipp://localhost:1/ipp/print", ""}) {
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
    const auto* label = panels[0]->findChild<QLabel*>("noPrinterLabel");
    ASSERT_TRUE(label);
    EXPECT_TRUE(label->isVisible());
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
