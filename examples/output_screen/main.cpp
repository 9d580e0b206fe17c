// SPDX-License-Identifier: MIT
// Lists the displays and shows a calibration chart on the one that is chosen. A number key takes the picture
// to that display; B or Escape brings it back into its window, where Escape ends.
#include <examples/output_screen/ChartPipeline.h>
#include <examples/output_screen/Displays.h>
#include <examples/output_screen/Output.h>
#include <examples/output_screen/Settings.h>
#include <examples/support/ExampleHost.h>

#include <VX_OpenGL64/output/VX_FinalOutputManager.h>
#include <VX_Platform/AppKit/NSApplication.h>
#include <VX_Platform/AppKit/NSEvent.h>
#include <VX_Platform/Foundation/NSNotificationCenter.h>
#include <VX_Platform/Foundation/NSTimer.h>
#include <VX_Platform/Foundation/VX_Diagnostics.h>

#include <cstdio>
#include <optional>
#include <string_view>

namespace {

struct Options : ExampleOptions {
    bool lists = false;
    std::string display, settings;
    double tour = 0.0;

    bool takeWord(int count, char** words, int& i);
};

bool Options::takeWord(int count, char** words, int& i) {
    const std::string_view word = words[i];
    if (word == "--list")
        return lists = true;
    const char* const value = i + 1 < count ? words[i + 1] : nullptr;
    if (!value || (word != "--display" && word != "--settings" && word != "--tour"))
        return take(count, words, i);
    ++i;
    if (word == "--tour")
        return std::sscanf(value, "%lf", &tour) == 1 && tour > 0.0;
    (word == "--display" ? display : settings) = value;
    return true;
}

// What keys and displays do to the output, and what is kept of it for the next run.
class Operator {
public:
    Operator(const Options& options, ChartPipeline* pipeline)
        : m_Options(options), m_Pipeline(pipeline), m_Settings(pipeline->finalOutputManager()) {
        m_Settings->SetResolution(CGSizeMake(options.host.width, options.host.height));
        m_Settings->SetPositionOffset(CGSizeMake(options.host.x, options.host.y));
        m_KeepsSettings = !options.settings.empty() && readSettings(options.settings, m_Settings);
    }
    ~Operator() { NSNotificationCenter::defaultCenter()->removeObserver(this); }

    void start(VX_GLHost& host);
    void end();

private:
    void placeWindow();
    void observe();
    bool takeKey(const NSEvent* event);
    void moveTo(const NSScreen* display);
    void moveToName(const std::string& name);
    void moveOn();
    void goBack();
    void tell();
    void keepSettings();

    const Options& m_Options;
    ChartPipeline* m_Pipeline;
    VX_FinalOutputManager* m_Settings;
    bool m_KeepsSettings;
    NSRef<NSWindow> m_Window;
    std::optional<Output> m_Output;
    NSTimer* m_Tour = nullptr;
    int m_Stops = 0;
};

void Operator::start(VX_GLHost& host) {
    m_Window = NSRef<NSWindow>::retain(host.window());
    const auto keys = [this](NSEvent* event) { return event->type() == NSKeyDown && takeKey(event); };
    m_Window->setEventHandler(keys);
    m_Output.emplace(host, keys);
    placeWindow();
    observe();
    tell();
    const NSString* const target = m_Settings->GetTargetScreenName();
    if (!m_Options.display.empty())
        moveToName(m_Options.display);
    else if (m_Settings->ShouldFitScreen() && target)
        moveToName(target->string());
    if (m_Options.tour > 0.0)
        m_Tour = NSTimer::scheduledTimerWithTimeInterval(
            m_Options.tour, [this](NSTimer*) { moveOn(); }, true);
}

// The file may say anything, and the display that the window was on may be off.
void Operator::placeWindow() {
    CGRect frame = m_Window->frame();
    const CGSize size = m_Settings->GetResolution(), offset = m_Settings->GetPositionOffset();
    if (size.width >= 1.0 && size.height >= 1.0 && size.width <= 16384.0 && size.height <= 16384.0)
        frame.size = size;
    const CGRect moved = {{offset.width, offset.height}, frame.size};
    m_Window->setFrame(isOnADisplay(moved) ? moved : frame);
}

void Operator::observe() {
    auto* const center = NSNotificationCenter::defaultCenter();
    center->addObserver(
        this, [this](NSNotification*) { tell(); }, NSApplicationDidChangeScreenParametersNotification,
        nullptr);
    // The window on the display would keep the program running.
    center->addObserver(
        this, [](NSNotification*) { NSApplication::sharedApplication()->stop(); },
        NSWindowWillCloseNotification, m_Window.get());
}

bool Operator::takeKey(const NSEvent* event) {
    const unsigned key = event->key();
    if (key >= '1' && key <= '9') {
        if (const auto display = displayOfNumber(static_cast<int>(key - '0')))
            moveTo(display.get());
        return true;
    }
    const bool goesBack = m_Output->isOut() && (key == 'b' || key == NSEscapeKey);
    if (goesBack)
        goBack();
    return goesBack;
}

void Operator::moveTo(const NSScreen* display) {
    m_Settings->SetShouldFitScreen(true);
    m_Settings->SetTargetScreenName(display->localizedName());
    m_Output->moveTo(display);
    tell();
    keepSettings();
}

void Operator::moveToName(const std::string& name) {
    if (const auto display = displayOfName(name))
        moveTo(display.get());
    else
        std::fprintf(stderr, "There is no display \"%s\": the output stays in its window\n", name.c_str());
}

// Display after display, then the window, and so on.
void Operator::moveOn() {
    if (const auto display = displayOfNumber(++m_Stops)) {
        moveTo(display.get());
    } else {
        m_Stops = 0;
        goBack();
    }
}

void Operator::goBack() {
    m_Output->goBack();
    m_Settings->SetShouldFitScreen(false);
    tell();
    keepSettings();
}

// What there is and where the picture is now: in the chart, and as the window's title.
void Operator::tell() {
    ChartCaption caption{"Window", "", displayLines()};
    caption.lines.push_back("Keys:   1 to 9 to that display   B or Escape back");
    if (m_Output->isOut()) {
        caption.name = m_Settings->GetTargetScreenName()->string();
        const auto display = displayOfName(caption.name);
        caption.size = display ? sizeOf(display.get()) : "switched off";
    }
    m_Window->setTitle(m_Output->isOut() ? ("Output is on " + caption.name + " - B: back").c_str()
                                         : "Output");
    m_Pipeline->setCaption(std::move(caption));
}

void Operator::keepSettings() {
    const CGRect frame = m_Window->frame();
    m_Settings->SetResolution(frame.size);
    m_Settings->SetPositionOffset(CGSizeMake(frame.origin.x, frame.origin.y));
    if (m_KeepsSettings)
        writeSettings(m_Options.settings, m_Settings);
}

void Operator::end() {
    if (m_Tour)
        m_Tour->invalidate();
    if (m_Window)
        keepSettings();
}

int list(const Options& options) {
    if (options.host.platform && !NSApplication::usePlatform(options.host.platform))
        return 1;
    const auto lines = displayLines();
    for (const std::string& line : lines)
        std::printf("%s\n", line.c_str());
    return lines.empty() ? 1 : 0;
}

} // namespace

int main(int count, char** words) {
    VX_SetDiagnostics(true);
    Options options;
    options.host.title = "Output";
    for (int i = 1; i < count; ++i) {
        if (!options.takeWord(count, words, i)) {
            std::fprintf(stderr,
                         "usage: %s [--list] [--display NAME] [--settings FILE] [--tour SECONDS] %s\n",
                         words[0], ExampleOptions::kUsage);
            return 2;
        }
    }
    if (options.lists)
        return list(options);
    const auto pipeline = NSInit(new ChartPipeline);
    Operator desk(options, pipeline.get());
    const int status = runExample(pipeline.get(), options, [&](VX_GLHost& host) { desk.start(host); });
    desk.end();
    return status;
}
