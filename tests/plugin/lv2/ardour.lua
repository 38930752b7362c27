-- Ardour plays a preset of the instrument and keeps it in a session. Without a window.
local uri = "https://tembrilon.com/QuarzelStrings"
local folder = os.getenv("QUARZEL_SESSION")

AudioEngine:set_backend("None (Dummy)", "", "")
local session = create_session(folder, "kept", 48000)
assert(session, "no session")
AudioEngine:start(false)

local function count(midi, audio)
  local channels = ARDOUR.ChanCount(ARDOUR.DataType("midi"), midi)
  channels:set_audio(audio)
  return channels
end

local function values(plugin)
  local list = {}
  for i = 0, 42 do
    list[i + 1] = string.format("%.9g", ARDOUR.LuaAPI.get_processor_param(plugin, i, true))
  end
  return table.concat(list, " ")
end

local tracks = session:new_midi_track(count(1, 0), count(0, 2), true, ARDOUR.PluginInfo(), nil, nil, 1,
  "strings", ARDOUR.PresentationInfo.max_order, ARDOUR.TrackMode.Normal, true)
local plugin = ARDOUR.LuaAPI.new_plugin(session, uri, ARDOUR.PluginType.LV2, "")
assert(not plugin:isnil(), "the instrument is not found")
tracks:front():add_processor_by_index(plugin, 0, nil, true)

local before = values(plugin)
local instrument = plugin:to_insert():plugin(0)
assert(instrument:load_preset(instrument:preset_by_label("Plucked Paper")), "no preset")
os.execute("sleep 0.5")
assert(values(plugin) ~= before, "the preset changes nothing")
ARDOUR.LuaAPI.set_processor_param(plugin, 39, 62.5)
os.execute("sleep 0.5")
local saved = values(plugin)
session:save_state("")
-- What Lua still holds would outlive its session.
tracks, plugin, instrument = nil, nil, nil
collectgarbage()
close_session()

session = load_session(folder, "kept")
assert(session, "the session does not load")
os.execute("sleep 1.5")
local kept = values(session:route_by_name("strings"):nth_plugin(0))
assert(kept == saved, "saved: " .. saved .. "\nkept: " .. kept)
-- Equal states stay in the folder that the first save made.
session:save_state("")
close_session()
print("The session keeps " .. kept)
quit()
