#pragma once

#include <imgui.h>

#include "Figures.h"

/* The GUI, without anybody who renders it. */
class BareGui {
public:
    explicit BareGui(const ImVec2& displaySize = {1280.0f, 900.0f}) {
        ImGui::CreateContext();
        ImGuiIO& io = ImGui::GetIO();
        io.IniFilename = nullptr;
        io.DisplaySize = displaySize;
        io.DeltaTime = 1.0f / 60.0f;
        io.BackendFlags |= ImGuiBackendFlags_RendererHasTextures | ImGuiBackendFlags_RendererHasVtxOffset;
        io.Fonts->AddFontDefault();
    }
    ~BareGui() {
        for(ImTextureData* const texture: ImGui::GetPlatformIO().Textures)
            texture->SetStatus(ImTextureStatus_Destroyed);
        ImGui::DestroyContext();
    }

    BareGui(const BareGui&) = delete;
    BareGui& operator=(const BareGui&) = delete;

    /* Draws a frame with items in one window.
       @return the seconds that they alone took */
    template <class Items> double frame(Items&& items) {
        ImGui::NewFrame();
        ImGui::SetNextWindowPos({0.0f, 0.0f});
        ImGui::SetNextWindowSize(ImGui::GetIO().DisplaySize);
        ImGui::Begin("Window");
        const double seconds = secondsOf(items);
        ImGui::End();
        ImGui::Render();
        for(ImTextureData* const texture: *ImGui::GetDrawData()->Textures) {
            if(texture->Status == ImTextureStatus_WantCreate) texture->SetTexID(1);
            texture->SetStatus(ImTextureStatus_OK);
        }
        return seconds;
    }
};
