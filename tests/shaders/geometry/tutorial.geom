// Moves each triangle to the right and mirrors nothing.
// gl_PositionIn[] holds its corners, gl_VerticesIn says how many there are.
#extension GL_EXT_geometry_shader4 : enable
#extension GL_ARB_texture_rectangle : enable

varying in vec4 tint[gl_VerticesIn];
varying out vec4 shade;

void main(void)
{
	int i;
	for(i = 0; i < gl_VerticesIn; i++)
	{
		gl_Position = gl_ModelViewProjectionMatrix * (gl_PositionIn[i] + vec4(4.0, 0.0, 0.0, 0.0));
		shade = tint[i];	/* varying in */
		EmitVertex();
	}
	EndPrimitive();
}
