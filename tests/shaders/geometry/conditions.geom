/* A text for two kinds
   of driver */
#version 120
#if defined(GL_EXT_geometry_shader4) && __VERSION__ < 130
#extension GL_EXT_geometry_shader4 : require
#else
#error not for this driver
#endif
#ifdef GL_unheard_of
#extension GL_unheard_of : require
#endif

#ifndef GL_EXT_geometry_shader4
varying nonsense;
#endif

// A dot on each corner: the first triangle's are green, those of all others magenta.
void main() {
    for (int i = 0; i < 3; ++i) {
        gl_Position = gl_ModelViewProjectionMatrix * gl_PositionIn[i];
        gl_PrimitiveID = gl_PrimitiveIDIn;
        gl_FrontColor = gl_PrimitiveIDIn == 0 ? vec4(0.0, 1.0, 0.0, 1.0) : vec4(1.0, 0.0, 1.0, 1.0);
        EmitVertex();
    }
}
