#pragma once

#include "host/stage/render/GlProgram.h"

/// Draws the sky where nothing else was drawn. The clouds are made at a quarter of the size, since their
/// noise is the dearest part of a picture. Used and destroyed with its context current.
class SkyPass {
public:
    SkyPass();
    ~SkyPass();
    SkyPass(const SkyPass&) = delete;
    SkyPass& operator=(const SkyPass&) = delete;

    /// Makes the clouds of a view of this size; binds a frame of its own.
    void DrawClouds(int width, int height);
    /// Into the bound frame, behind everything.
    void Draw() const;

private:
    GlProgram cloudProgram;
    GlProgram skyProgram;
    unsigned emptyArray = 0;
    unsigned frame = 0;
    unsigned clouds = 0;
    int cloudWidth = 0;
    int cloudHeight = 0;
};
