// The precompiled header of the build, compiled once here and reused by
// every other target (see Precompiled.h).
