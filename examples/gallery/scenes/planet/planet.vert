#version 120

uniform vec3 axis, right, ahead; // where the planet's own axes point
varying vec3 world, normal;

void main() {
    normal = gl_Vertex.x * right + gl_Vertex.y * axis + gl_Vertex.z * ahead;
    world = normal;
    gl_TexCoord[0] = gl_MultiTexCoord0;
    gl_Position = gl_ModelViewProjectionMatrix * vec4(world, 1.0);
}
