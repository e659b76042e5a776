// The last of the scripts: everything that it needs is there.

const model = JSON.parse(byId('model').textContent);
new Viewer(model).start();
if (model.live) followServer();
