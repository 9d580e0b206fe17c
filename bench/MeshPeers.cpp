// SPDX-License-Identifier: MIT
#include <bench/MeshPeers.h>

#if VX_BENCH_ASSIMP
#include <assimp/scene.h>
#include <assimp/Importer.hpp>
#endif
#if VX_BENCH_IRRLICHT
#include <irrlicht.h>
#endif

#include <memory>

namespace {

#if VX_BENCH_IRRLICHT
int loadByIrrlicht(const std::string& path) {
    using namespace irr;
    // Without a driver it does nothing but read; the device is made once and kept.
    static const std::shared_ptr<IrrlichtDevice> device(
        [] {
            SIrrlichtCreationParameters parameters;
            parameters.DriverType = video::EDT_NULL;
            parameters.LoggingLevel = ELL_NONE;
            return createDeviceEx(parameters);
        }(),
        [](IrrlichtDevice* made) { made->drop(); });
    if (path.empty())
        return 0;
    scene::ISceneManager* manager = device->getSceneManager();
    scene::IAnimatedMesh* mesh = manager->getMesh(path.c_str());
    if (!mesh)
        return 0;
    int vertices = 0;
    for (u32 i = 0; i < mesh->getMesh(0)->getMeshBufferCount(); ++i)
        vertices += static_cast<int>(mesh->getMesh(0)->getMeshBuffer(i)->getVertexCount());
    manager->getMeshCache()->removeMesh(mesh);
    return vertices;
}
#endif

#if VX_BENCH_ASSIMP
int loadByAssimp(const std::string& path) {
    if (path.empty())
        return 0;
    Assimp::Importer importer;
    const aiScene* scene = importer.ReadFile(path, 0);
    return scene && scene->mNumMeshes ? static_cast<int>(scene->mMeshes[0]->mNumVertices) : 0;
}
#endif

} // namespace

std::vector<std::pair<std::string, vx::bench::MeshLoad>> vx::bench::meshPeers() {
    std::vector<std::pair<std::string, MeshLoad>> peers;
#if VX_BENCH_IRRLICHT
    peers.emplace_back("Irrlicht", loadByIrrlicht);
#endif
#if VX_BENCH_ASSIMP
    peers.emplace_back("Assimp", loadByAssimp);
#endif
    return peers;
}
