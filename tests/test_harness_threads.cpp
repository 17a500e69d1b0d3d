// Threads: each has its own status, mode, handler and tables, and leaves nothing behind.
#include <atomic>
#include <thread>

#include <gtest/gtest.h>

#include "support/heap.h"
#include "support/prepared.h"
#include "support/reports.h"

#ifdef VEK_TEST_DLL
#define WIN32_LEAN_AND_MEAN
#include <windows.h>
#endif

namespace {

using namespace test;

// The address that the library itself knows the handler by.
VekErrorHandler messageBoxHandler() {
#ifdef VEK_TEST_DLL
    return reinterpret_cast<VekErrorHandler>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA("vekm6.dll"), "vekGuiBoxReport")));
#else
    return vekGuiBoxReport;
#endif
}

// All of them reach the end of each round together.
class Rounds {
public:
    explicit Rounds(int threads) : members(threads) {}
    void meet() {
        const int round = finished.load();
        if (arrived.fetch_add(1) + 1 == members) {
            arrived = 0;
            finished = round + 1;
        } else {
            while (finished.load() == round) std::this_thread::yield();
        }
    }

private:
    const int members;
    std::atomic<int> arrived{0};
    std::atomic<int> finished{0};
};

template <class Body>
void inThreads(int count, Body body) {
    std::vector<std::thread> threads;
    for (int i = 0; i < count; ++i) threads.emplace_back([&body, i] { body(i); });
    for (std::thread& thread : threads) thread.join();
}

template <int N>
VekStatus VEKAPI answering(VekStatus, const char*, const char*, const char*, int) {
    return N;
}

TEST(Threads, StartFresh) {
    Reports reports;
    vekSetErrMode(VEK_ErrModeSilent);
    vekSetErrStatus(VEK_StsBadArg);
    VekStatus status = -100;
    int mode = -100;
    VekErrorHandler handler = nullptr;
    inThreads(1, [&](int) {
        status = vekGetErrStatus();
        mode = vekGetErrMode();
        handler = vekRedirectError(nullptr);
    });
    EXPECT_EQ(status, VEK_StsOk);
    EXPECT_EQ(mode, VEK_ErrModeLeaf);
    EXPECT_EQ(handler, messageBoxHandler());
    EXPECT_EQ(vekGetErrStatus(), VEK_StsBadArg);
    EXPECT_EQ(vekGetErrMode(), VEK_ErrModeSilent);
    vekSetErrMode(VEK_ErrModeLeaf);
}

TEST(Threads, OwnStatusModeHandlerAndTables) {
    constexpr VekErrorHandler handlers[] = {answering<-100>, answering<-101>, answering<-102>, answering<-103>};
    constexpr int count = 4;
    Rounds rounds(count);
    std::atomic<int> wrong{0};
    const void* tables[count][3] = {};
    inThreads(count, [&](int i) {
        for (int round = 0; round < 50; ++round) {
            const int mode = (i + round) % 3;
            const VekStatus status = -3 - (i + round) % 4;
            const int other = (i + round) % count;
            vekRedirectError(handlers[other]);
            vekSetErrMode(mode);
            rounds.meet();
            wrong += vekError(status, "test", "message", "file", 1) != -100 - other;
            rounds.meet();
            float value = 1;
            wrong += vekGetErrMode() != mode || vekGetErrStatus() != status;
            wrong += veksbSqr1(&value, 0) != -100 - other || value != 1;
            vekSetErrStatus(VEK_StsOk);
        }
        tables[i][0] = vekGetBitRevTbl(6);
        tables[i][1] = vekcGetFftTwdTbl(6);
        tables[i][2] = vekzGetDftTwdTbl(60);
        rounds.meet();   // while all of them live
    });
    EXPECT_EQ(wrong.load(), 0);
    for (int kind = 0; kind < 3; ++kind)
        for (int i = 0; i < count; ++i)
            for (int j = 0; j < i; ++j) EXPECT_NE(tables[i][kind], tables[j][kind]);
}

TEST(Threads, AllExportsAtOnce) {
    const int sizes[] = {3, 6, 11};
    std::vector<std::vector<unsigned char>> wanted;
    {
        Reports reports;
        for (const Row& tested : rows()) {
            if (!tested.hasBuffers()) continue;
            for (const int size : sizes) {
                const Prepared prepared(tested, size);
                prepared.call();
                wanted.push_back(prepared.outputs());
            }
        }
    }
    std::atomic<int> wrong{0};
    std::atomic<int> compared{0};
    inThreads(4, [&](int) {
        Reports reports;
        std::size_t next = 0;
        for (const Row& tested : rows()) {
            if (!tested.hasBuffers()) continue;
            for (const int size : sizes) {
                const Prepared prepared(tested, size);
                prepared.call();
                if (prepared.outputs() != wanted[next++]) ++wrong;
                ++compared;
            }
        }
        if (reports.count() != 0) ++wrong;
    });
    EXPECT_EQ(wrong.load(), 0);
    EXPECT_EQ(compared.load(), static_cast<int>(4 * wanted.size()));
}

void startTransformEnd(int seed) {
    VekCplx data[16] = {};
    data[0].re = static_cast<float>(seed + 1);
    vekRedirectError(answering<-1>);
    vekcFft(data, 4, VEK_Forw);
    double reals[18] = {};
    vekdRealFft(reals, 4, VEK_Forw);
    vekGetBitRevTbl(3);
    vekvGetDftTwdTbl(7);
    vekcFft(nullptr, 4, VEK_Forw);   // ends with an error standing
}

TEST(Threads, TenThousandLeaveNoMemory) {
    if (!heap::available()) GTEST_SKIP();
    startTransformEnd(0);
    vekSetErrStatus(VEK_StsOk);
    vekRedirectError(nullptr);
    const auto batch = [] { inThreads(8, startTransformEnd); };
    batch();   // what the system keeps for threads is there now
    const long before = heap::outstanding();
    for (int i = 0; i < 10000 / 8; ++i) batch();
    EXPECT_EQ(heap::outstanding(), before);
    vekcFreeTwdTbls();
    vekzFreeTwdTbls();
    vekvFreeTwdTbls();
    vekFreeBitRevTbls();
}

}   // namespace
