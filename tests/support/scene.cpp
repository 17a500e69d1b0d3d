#include "scene.h"

namespace test {

std::size_t Scene::at(const char* name) const { return static_cast<std::size_t>(row.index(name)); }

void Scene::setUp() {
    if (row.group.setUp == nullptr) return;
    const VekStatus status = vekGetErrStatus();
    vekSetErrStatus(VEK_StsOk);
    row.group.setUp(*this);
    vekSetErrStatus(status);
}

void Scene::tearDown() {
    if (row.group.tearDown != nullptr) row.group.tearDown(*this);
}

}   // namespace test
