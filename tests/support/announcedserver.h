#pragma once

#include "httpserver.h"

/// An HTTP server that the program takes for its update server while this lives.
class AnnouncedServer : public HttpServer
{
public:
    AnnouncedServer() { qputenv("CORVIN_UPDATE_SERVER", address().toLatin1()); }
    ~AnnouncedServer() override { qunsetenv("CORVIN_UPDATE_SERVER"); }
};
