// What the tool must handle only on Windows: the console's Ctrl+C, files that readers hold open, and ill-formed UTF-16
// arguments.
// windows_tool_test TOOL
#include <chrono>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <thread>

#include <windows.h>

namespace fs = std::filesystem;

static int failures = 0;

static void expect(bool holds, const std::string& what) {
    if (!holds) std::cout << "FAILED: " << what << '\n';
    failures += holds ? 0 : 1;
}

/// Starts the command line with its output in a file.
static HANDLE start(std::wstring line, const fs::path& output) {
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    STARTUPINFOW how{};
    how.cb = sizeof how;
    how.dwFlags = STARTF_USESTDHANDLES;
    how.hStdOutput = how.hStdError = CreateFileW(output.c_str(), GENERIC_WRITE, FILE_SHARE_READ, &inherited,
                                                 CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    PROCESS_INFORMATION child{};
    expect(CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &how, &child),
           "the tool starts");
    CloseHandle(how.hStdOutput);
    CloseHandle(child.hThread);
    return child.hProcess;
}

static DWORD exit_code(HANDLE process) {
    DWORD code = STILL_ACTIVE;
    if (WaitForSingleObject(process, 20'000) == WAIT_OBJECT_0) GetExitCodeProcess(process, &code);
    TerminateProcess(process, 99);
    CloseHandle(process);
    return code;
}

/// The number in a file, as soon as it is there.
static DWORD published_pid(const fs::path& file) {
    DWORD pid = 0;
    for (int i = 0; i != 1000 && !(std::ifstream(file) >> pid); ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    return pid;
}

// The system's names for them are for narrow text in a program that is not built for wide text only.
static const LPCWSTR version_kind = MAKEINTRESOURCEW(16), manifest_kind = MAKEINTRESOURCEW(24);

/// A resource of a binary, as bytes.
static std::string resource(const std::wstring& binary, LPCWSTR kind) {
    const HMODULE module = LoadLibraryExW(binary.c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
    const HRSRC found = FindResourceW(module, MAKEINTRESOURCEW(1), kind);
    if (found == nullptr) return {};
    const auto* const bytes = static_cast<const char*>(LockResource(LoadResource(module, found)));
    return std::string(bytes, SizeofResource(module, found));
}

int main() {
    int count = 0;
    wchar_t** const arguments = CommandLineToArgvW(GetCommandLineW(), &count);
    // Some programs that start others take a slash for the beginning of an option.
    const std::wstring tool = L"\"" + fs::absolute(arguments[1]).make_preferred().wstring() + L"\"";
    for (int i = 1; i != count; ++i)
        expect(resource(arguments[i], version_kind).find(std::string("O\0r\0v\0a\0n\0e", 11)) !=
                   std::string::npos,
               "has a version");
    expect(resource(arguments[1], manifest_kind).find("<longPathAware") != std::string::npos,
           "takes long paths");
    const fs::path root = fs::temp_directory_path() / ("zep_tool_" + std::to_string(GetCurrentProcessId()));
    const fs::path output = root / "output", pid_file = root / "main.pid";
    fs::create_directories(root);

    const std::wstring lone = {L'x', 0xD800, L'y'};
    expect(exit_code(start(tool + L" check --auto-deploy-root D --driver " + lone, output)) == 0, "accepted");
    std::ifstream in(output);
    const std::string text{std::istreambuf_iterator<char>(in), {}};
    expect(text.find("driver = x\xEF\xBF\xBDy") != std::string::npos,
           "a lone surrogate harms no neighbour: " + text);

    const auto said = [&](const std::wstring& words) {
        exit_code(start(tool + words, root / "said"));
        std::ifstream file(root / "said");
        return std::string(std::istreambuf_iterator<char>(file), {});
    };

    struct PathRow {
        const wchar_t* path;
        const char* warning;
    };
    constexpr PathRow paths[] = {
        {L"C:\\x", ""},
        {L"c:/x", ""},
        {L"\\\\srv\\x", ""},
        {L"//srv/x", ""},
        {L"\\\\?\\C:\\x", ""},
        {L"\\\\.\\C:\\x", ""},
        {L"\\x", "foreign-path"},
        {L"/x", "foreign-path"},
        {L"x", "relative-directory"},
        {L"C:x", "relative-directory"},
        {L"C:", "relative-directory"},
        {L"C:\\a|b\\c", "foreign-path"},
        {L"//srv/x/a?b", "foreign-path"},
        {L"C:\\x\\Nul.tar.gz", "foreign-path"},
        {L"C:\\lpt1", "foreign-path"},
        {L"C:\\x.\\y", "foreign-path"},
        {L"\\\\?\\C:\\x.", ""},
        {L"C:\\x\\..\\console.d\\com12", ""},
    };
    for (const auto& [path, warning] : paths) {
        const std::string answer = said(L" check --http 1 --auto-deploy-root " + std::wstring(path));
        for (const std::string id : {"foreign-path", "relative-directory"})
            expect((answer.find("[" + id + "]") != answer.npos) == (id == warning), answer);
    }

    for (const auto& [path, obstacle] : {std::pair(L"Q:\\x", "there is no drive Q:"),
                                         {L"\\\\no.such\\share\\x", "there is no share \\\\no.such\\share"},
                                         {L"C:\\x.", "the dot at the end"},
                                         {L"C:\\x", "mkdir"}}) {
        const std::string answer =
            said(L" preflight --only directories --auto-deploy-root " + std::wstring(path));
        expect(answer.find(obstacle) != answer.npos &&
                   (answer.find("mkdir") != answer.npos) == (obstacle == std::string("mkdir")),
               answer);
    }

    for (const auto& [other, same] : {std::pair(L"c:/Zd/", true), {L"C:\\zd. ", true}, {L"C:\\zdd", false}}) {
        const std::string answer = said(L" check --auto-deploy-root C:\\ZD\\.zep_DEPLOYED --extract-root \"" +
                                        std::wstring(other) + L"\"");
        expect((answer.find("[same-directory]") != answer.npos) == same, answer);
    }

    // cmd.exe would run a part of a value, and read another value; other programs that read their line get it as it is.
    std::ofstream(root / "server.cmd") << "@echo STARTED %*\r\n";
    const std::wstring batch = L" -- \"" + (root / "server.cmd").wstring() + L"\"";
    for (const wchar_t* const value : {L"\"C:\\x&echo INJECTED\"", L"%PATH%", L"a^b", L"\"a\\\"b\""}) {
        const std::string answer = said(L" exec --auto-deploy-root D --log-root " + (value + batch));
        expect(answer.find("batch file") != answer.npos && answer.find("STARTED") == answer.npos, answer);
    }
    const std::string started = said(L" exec --auto-deploy-root D --log-root a,b" + batch);
    expect(started.find("STARTED \"--auto-deploy-root\" \"D\" \"--log-root\" \"a,b\"") != started.npos,
           started);
    const std::string echoed = said(L" publish --auto-deploy-root D --pid-root \"" + root.wstring() +
                                    L"\" -- cmd.exe /c echo hi there");
    expect(echoed.find("hi there") != echoed.npos, echoed);

    // A new console, which the tool shares; both get the event, and only the tool reacts to it.
    FreeConsole();
    expect(AllocConsole(), "there is a console");
    SetConsoleCtrlHandler([](DWORD) -> BOOL { return TRUE; }, TRUE);
    const std::wstring flags = L" --auto-deploy-root D --pid-root \"" + root.wstring() + L"\"";
    // Ctrl+Break would do as well, but Wine sends only Ctrl+C.
    for (const bool is_read : {false, true}) {
        const HANDLE process = start(tool + L" publish" + flags, root / "published");
        expect(published_pid(pid_file) != 0, "the pid file is published");
        // A file that a reader holds open cannot be removed; it delays the end only for a moment.
        std::ifstream reader;
        if (is_read) reader.open(pid_file);
        expect(GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0), "Ctrl+C is sent");
        expect(exit_code(process) == 0, "publish ends with 0");
        expect(fs::exists(pid_file) == is_read, "the pid file is gone, unless it is read");
        std::ifstream answer(root / "published");
        const std::string line{std::istreambuf_iterator<char>(answer), {}};
        expect((line.find("main.pid: does another program have it open?") != line.npos) == is_read, line);
    }

    // A tool that is killed takes its command with it. A command that has ended leaves what it has started.
    const std::wstring deaf =
        tool + L" status --timeout 60 --auto-deploy-root D --control-port 1 --endpoint-root none";
    const std::wstring starter = L"cmd.exe /c start /b \"\" " + tool + L" publish";
    for (const bool is_killed : {false, true}) {
        fs::remove(pid_file);
        const HANDLE first = start(
            tool + (is_killed ? L" publish" + flags + L" -- " + deaf : L" exec" + flags + L" -- " + starter),
            root / "published");
        const HANDLE second = OpenProcess(PROCESS_ALL_ACCESS, FALSE, published_pid(pid_file));
        expect(WaitForSingleObject(second, 0) == WAIT_TIMEOUT, "the second process runs");
        if (is_killed) TerminateProcess(first, 1);
        exit_code(first);
        expect(WaitForSingleObject(second, is_killed ? 20'000 : 200) ==
                   (is_killed ? WAIT_OBJECT_0 : WAIT_TIMEOUT),
               "it ends with a killed tool only");
        TerminateProcess(second, 1);
        WaitForSingleObject(second, 20'000);
    }
    expect(exit_code(start(tool + L" status" + flags, root / "located")) == 5, "what is left is stale");

    in.close();
    std::error_code none;
    fs::remove_all(root, none);
    std::cout << (failures == 0 ? "passed\n" : "failed\n");
    return failures;
}
