// SPDX-License-Identifier: MIT
#include <examples/two_views/Scene.h>

#include <VX_OpenGL64/meshes/shapes/VX_GLGeometryCube.h>
#include <VX_OpenGL64/meshes/shapes/VX_GLGeometrySphere.h>
#include <VX_OpenGL64/shaders/VX_FragmentShader.h>
#include <VX_OpenGL64/shaders/VX_VertexShader.h>

#include <epoxy/gl.h>

#include <cmath>
#include <vector>

namespace {

constexpr int Format = VX_GLVertexPN;

constexpr const char* kVertexShader = R"(#version 120
uniform vec4 place; // centre and radius
varying vec3 world, normal;
void main() {
    world = place.xyz + place.w * gl_Vertex.xyz;
    normal = gl_Normal;
    gl_Position = gl_ModelViewProjectionMatrix * vec4(world, 1.0);
}
)";

constexpr const char* kFragmentShader = R"(#version 120
uniform vec4 balls[7], color; // with alpha 0 the colour is the surface's own light
uniform vec3 lamp, eye;
uniform float tiled;
uniform sampler2D tiles;
varying vec3 world, normal;

// How much of the lamp is seen past the balls; their shadows grow softer with the distance.
float seen(vec3 toLamp, float distance) {
    float light = 1.0;
    for (int i = 0; i < 7; ++i) {
        vec3 toBall = balls[i].xyz - world;
        float along = dot(toBall, toLamp);
        float soft = 0.01 + 0.07 * along;
        if (along > 0.0 && along < distance)
            light *= smoothstep(-soft, soft, length(toBall - along * toLamp) - balls[i].w);
    }
    return light;
}

void main() {
    vec3 n = normalize(normal), toLamp = lamp - world;
    float distance = length(toLamp);
    toLamp /= distance;
    vec3 surface = color.rgb * mix(vec3(1.0), texture2D(tiles, world.xz * 0.5).rgb, tiled);
    float light = seen(toLamp, distance) / (0.5 + 0.09 * distance * distance);
    float shine = pow(max(dot(n, normalize(toLamp + normalize(eye - world))), 0.0), 60.0) * (1.0 - tiled);
    vec3 lit = surface * (0.26 + 0.12 * n.y + light * max(dot(n, toLamp), 0.0)) + 0.5 * shine * light;
    gl_FragColor = vec4(mix(color.rgb, lit, color.a), 1.0);
}
)";

unsigned int makeTiles() {
    constexpr int side = 64, joint = 2;
    std::vector<unsigned char> pixels;
    for (int i = 0; i < side * side; ++i) {
        const int x = i % side, y = i / side, half = side / 2;
        const bool isJoint = x % half < joint || y % half < joint;
        pixels.push_back(isJoint ? 90 : (x < half) == (y < half) ? 225 : 150);
    }
    unsigned int texture = 0;
    glGenTextures(1, &texture);
    glBindTexture(GL_TEXTURE_2D, texture);
    glTexParameteri(GL_TEXTURE_2D, GL_GENERATE_MIPMAP, GL_TRUE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR_MIPMAP_LINEAR);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_LUMINANCE8, side, side, 0, GL_LUMINANCE, GL_UNSIGNED_BYTE,
                 pixels.data());
    return texture;
}

void makeProgram(VX_Program& program) {
    VX_VertexShader vertex;
    VX_FragmentShader fragment;
    if (vertex.loadAndCompile(kVertexShader) && fragment.loadAndCompile(kFragmentShader))
        program.attachShader(&vertex, &fragment, false);
}

} // namespace

void Scene::prepare() {
    VX_GLGeometrySphere sphere;
    sphere.m_Radius = 1.0f;
    sphere.m_Subdivision = 3;
    sphere.Generate(Format);
    m_Sphere.UpdateByMeshData(GL_STATIC_DRAW, GL_STATIC_DRAW, &sphere);
    VX_GLGeometryCube floor;
    floor.m_Center = {0.0f, -0.15f, 0.0f};
    floor.m_HalfSize = {3.0f, 0.15f, 3.0f};
    floor.Generate(Format);
    m_Floor.UpdateByMeshData(GL_STATIC_DRAW, GL_STATIC_DRAW, &floor);
    m_Tiles = makeTiles();
    makeProgram(m_Program);
}

void Scene::release() {
    m_Sphere.ClearAll();
    m_Floor.ClearAll();
    m_Program.freeProgram();
    glDeleteTextures(1, &m_Tiles);
    m_Tiles = 0;
}

void Scene::moveTo(double seconds) {
    const auto time = static_cast<float>(seconds);
    m_Balls[0] = {0.0f, 0.75f, 0.0f, 0.75f};
    for (int i = 1; i < kBalls; ++i) {
        const float turn = static_cast<float>(i) * 1.0472f + 0.25f * time;
        const float radius = 0.24f + 0.03f * static_cast<float>(i);
        const float bounce = 0.7f * std::abs(std::sin(1.8f * time + 2.1f * static_cast<float>(i)));
        m_Balls[static_cast<std::size_t>(i)] = {1.95f * std::cos(turn), radius + bounce,
                                                1.95f * std::sin(turn), radius};
    }
    m_Lamp = {1.5f * std::cos(-0.8f * time + 0.6f), 2.5f, 1.5f * std::sin(-0.8f * time + 0.6f)};
}

void Scene::look(const Eye& eye, float aspect) {
    m_Camera.m_Aspect = aspect;
    m_Camera.m_EyeAt = eye.at;
    m_Camera.m_Up = eye.up;
    m_Camera.m_LookAt = {0.0f, 0.6f, 0.0f};
    const float side = 0.5f * eye.height;
    glMatrixMode(GL_PROJECTION);
    if (eye.height > 0.0f)
        m_Camera.SetProjectionOrtho(-side * aspect, side * aspect, -side, side, 0.1, 30.0);
    else
        m_Camera.SetProjectionPerspective();
    glMatrixMode(GL_MODELVIEW);
    m_Camera.SetCameraView();
}

void Scene::drawAt(VX_GLMeshDataRenderer& mesh, const glm::vec4& place, const glm::vec4& color, bool tiled) {
    m_Program.set4f("place", place.x, place.y, place.z, place.w);
    m_Program.set4f("color", color.r, color.g, color.b, color.a);
    m_Program.set1f("tiled", tiled ? 1.0f : 0.0f);
    mesh.Draw(tiled ? GL_QUADS : GL_TRIANGLES, Format, 0, 0);
}

void Scene::draw(const Eye& eye, int width, int height) {
    static const glm::vec4 colors[kBalls] = {{0.92f, 0.9f, 0.86f, 1.0f},  {0.9f, 0.3f, 0.22f, 1.0f},
                                             {0.95f, 0.62f, 0.15f, 1.0f}, {0.85f, 0.8f, 0.25f, 1.0f},
                                             {0.3f, 0.68f, 0.35f, 1.0f},  {0.2f, 0.55f, 0.8f, 1.0f},
                                             {0.55f, 0.38f, 0.75f, 1.0f}};
    glViewport(0, 0, width, height);
    glClearColor(eye.background.r, eye.background.g, eye.background.b, 1.0f);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glEnable(GL_DEPTH_TEST);
    look(eye, static_cast<float>(width) / static_cast<float>(height > 0 ? height : 1));

    glBindTexture(GL_TEXTURE_2D, m_Tiles);
    m_Program.activeProgram();
    m_Program.set4fv("balls", kBalls, &m_Balls[0].x);
    m_Program.set3fv("lamp", 1, &m_Lamp.x);
    m_Program.set3fv("eye", 1, &eye.at.x);
    m_Program.set1i("tiles", 0);
    drawAt(m_Floor, {0.0f, 0.0f, 0.0f, 1.0f}, {0.9f, 0.88f, 0.84f, 1.0f}, true);
    for (std::size_t i = 0; i < kBalls; ++i)
        drawAt(m_Sphere, m_Balls[i], colors[i]);
    drawAt(m_Sphere, {m_Lamp, 0.09f}, {1.0f, 0.97f, 0.85f, 0.0f});
    m_Program.deactiveProgram();
}
