// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/VX_Export.h>

/// Whether the log is also told what a developer of a host wants to know and a user does not; off by default.
/// Lines that it adds: where in which file a shader does not compile, the files of a program that does not
/// link, a filter manager used with contexts that share nothing, why an X file did not load and what a load
/// passed by, why a picture, a DDS file or a set of cube faces did not load, the text of an alert that is
/// shown on the screen, a view that is in no window or in one that was never shown, and what the driver has
/// to say (`KHR_debug`, of contexts made from now on; it costs time). It reads no GL error. Any thread.
///
/// The same can be asked for without it: `VX_VertexShader::failure` and the like, `VX_Program::failure`,
/// `VX_GLFilterManager::Failures`, `VX_GLMeshXLoader::Report`.
VX_EXPORT void VX_SetDiagnostics(bool on);
VX_EXPORT bool VX_GetDiagnostics();
