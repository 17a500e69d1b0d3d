#ifdef _WIN32

#include "os.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

#include <io.h>
#include <process.h>

namespace test {

std::size_t pageSize() { return 4096; }

void* mapBetweenGuards(std::size_t bytes) {
    const std::size_t page = pageSize();
    char* all = static_cast<char*>(VirtualAlloc(nullptr, bytes + 2 * page, MEM_RESERVE, PAGE_NOACCESS));
    if (all == nullptr || VirtualAlloc(all + page, bytes, MEM_COMMIT, PAGE_READWRITE) == nullptr) std::abort();
    return all + page;
}

void unmapBetweenGuards(void* first, std::size_t) {
    VirtualFree(static_cast<char*>(first) - pageSize(), 0, MEM_RELEASE);
}

Ended runSelf(const std::vector<std::string>& arguments, const char*) {
    const std::string quoted = "\"" + selfPath + "\"";
    std::vector<const char*> argv = {quoted.c_str(), "--child"};
    for (const std::string& argument : arguments) argv.push_back(argument.c_str());
    argv.push_back(nullptr);
    std::FILE* errors = std::tmpfile();
    const int own = _dup(2);
    _dup2(_fileno(errors), 2);
    const auto process = reinterpret_cast<HANDLE>(_spawnv(_P_NOWAIT, selfPath.c_str(), argv.data()));
    _dup2(own, 2);
    _close(own);

    Ended ended;
    DWORD code = 0;
    if (WaitForSingleObject(process, 60000) != WAIT_OBJECT_0)
        TerminateProcess(process, 0);
    else if (GetExitCodeProcess(process, &code) != 0)
        ended.code = static_cast<int>(code);
    CloseHandle(process);
    std::rewind(errors);
    for (int next; (next = std::fgetc(errors)) != EOF;) ended.errors += static_cast<char>(next);
    std::fclose(errors);
    return ended;
}

bool reroute(const char* name, void* to, void** before) {
    HMODULE library = GetModuleHandleA("vekm6.dll");
    if (library == nullptr) library = GetModuleHandleA(nullptr);
    auto* base = reinterpret_cast<unsigned char*>(library);
    const auto* dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
    const auto* nt = reinterpret_cast<const IMAGE_NT_HEADERS*>(base + dos->e_lfanew);
    const auto& directory = nt->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    for (auto* module = reinterpret_cast<IMAGE_IMPORT_DESCRIPTOR*>(base + directory.VirtualAddress); module->Name != 0;
         ++module) {
        auto* names = reinterpret_cast<IMAGE_THUNK_DATA*>(base + module->OriginalFirstThunk);
        auto* slots = reinterpret_cast<IMAGE_THUNK_DATA*>(base + module->FirstThunk);
        for (; names->u1.AddressOfData != 0; ++names, ++slots) {
            const auto* import = reinterpret_cast<IMAGE_IMPORT_BY_NAME*>(base + names->u1.AddressOfData);
            if (IMAGE_SNAP_BY_ORDINAL(names->u1.Ordinal) || std::strcmp(import->Name, name) != 0) continue;
            DWORD old = 0;
            VirtualProtect(slots, sizeof to, PAGE_READWRITE, &old);
            std::memcpy(before, slots, sizeof to);
            std::memcpy(slots, &to, sizeof to);
            VirtualProtect(slots, sizeof to, old, &old);
            return true;
        }
    }
    return false;
}

}   // namespace test

#endif
