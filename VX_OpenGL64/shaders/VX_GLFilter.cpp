// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/shaders/VX_GLFilter.h>

#include <VX_OpenGL64/shaders/VX_Program.h>
#include <VX_OpenGL64/targets/VX_GLRenderTarget.h>
#include <VX_Platform/Foundation/NSLog.h>

VX_GLFilter::VX_GLFilter(VX_GLFilterManager* manager)
    : m_Manager(manager), m_Self(std::make_shared<VX_GLFilter*>(this)) {}

VX_GLFilter::~VX_GLFilter() {
    for (VX_Program* program : m_Programs)
        delete program;
    m_Programs.clear();
    delete m_RenderTarget;
}

const VX_GLShaderInformation* VX_GLFilter::ShadersInformation() {
    return nullptr;
}

const VX_GLGeometryShaderInformation* VX_GLFilter::GeometryShadersInformation() {
    return nullptr;
}

bool VX_GLFilter::NeedFrameBuffer() {
    return true;
}

int VX_GLFilter::GetMinRTCount() {
    return 1;
}

bool VX_GLFilter::IsRT2D() {
    return false;
}

unsigned int VX_GLFilter::SetResolution(int width, int height) {
    VX_GLRenderTarget& target = renderTarget("SetResolution");
    target.SetResolution(width, height);
    return target.CreateFrameBuffer();
}

bool VX_GLFilter::Setup() {
    return true;
}

void VX_GLFilter::FrameMove(double time) {}

bool VX_GLFilter::AttachProgram(VX_Program* program, VX_VertexShader* vertex, VX_FragmentShader* fragment,
                                VX_GeometryShader* geometry, int inputType, int outputType, int verticesOut) {
    if (!program->attachShader(vertex, fragment, geometry != nullptr)) {
        NSLog("Failed: CreateProgram");
        return false;
    }
    if (!geometry)
        return true;
    if (program->attachGeometryShader(geometry, inputType, outputType, verticesOut))
        return true;
    NSLog("Failed: CreateProgram because geometry shader wasn't attached");
    return false;
}

VX_Program* VX_GLFilter::CreateProgram(VX_VertexShader* vertex, VX_FragmentShader* fragment,
                                       VX_GeometryShader* geometry, int inputType, int outputType,
                                       int verticesOut) {
    auto* program = new VX_Program;
    if (!AttachProgram(program, vertex, fragment, geometry, inputType, outputType, verticesOut)) {
        m_Failure = program->failure();
        delete program;
        return nullptr;
    }
    m_Programs.push_back(program);
    return program;
}

unsigned int VX_GLFilter::CreateRT(unsigned int internalFormat, unsigned int type, int width, int height) {
    return renderTarget("CreateRT").AddTextureBuffer(internalFormat, type, width, height);
}

unsigned int VX_GLFilter::Create2DRT(unsigned int internalFormat, unsigned int type, int width, int height) {
    return renderTarget("Create2DRT").AddTexture2DBuffer(internalFormat, type, width, height);
}

void VX_GLFilter::Bind(int index) {
    renderTarget("Bind").Bind(index);
}

void VX_GLFilter::Binds(int count, unsigned int* buffers) {
    renderTarget("Binds").Binds(count, buffers);
}

void VX_GLFilter::Unbind() {
    renderTarget("Unbind").Unbind();
}

void VX_GLFilter::DrawFullScreen(int index) {
    renderTarget("DrawFullScreen").DrawFullScreen(index);
}

void VX_GLFilter::DrawFullScreen2D(int index) {
    renderTarget("DrawFullScreen2D").DrawFullScreen2D(index);
}

unsigned int VX_GLFilter::GetRTexture(int index) {
    const std::vector<unsigned int>& textures = renderTarget("GetRTexture").m_Textures;
    const auto place = static_cast<std::size_t>(index); // a negative index becomes larger than any list
    return place < textures.size() ? textures[place] : 0;
}

VX_GLRenderTarget& VX_GLFilter::renderTarget(const char* caller) const {
    if (!m_RenderTarget)
        vx::fatal("VX_GLFilter::%s: the filter's m_RenderTarget is null", caller);
    return *m_RenderTarget;
}
